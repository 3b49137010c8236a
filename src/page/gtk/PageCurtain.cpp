#include "page/gtk/PageCurtain.hpp"

#include "page/gtk/PageScripts.hpp"

#include <glibmm/main.h>

#include <utility>

namespace pagora {

namespace {

// In milliseconds. A page that is not visible is never painted.
constexpr unsigned paintTimeout = 2000;
// Maximum time for which a picture of the page is shown while resources are loading, in milliseconds.
constexpr unsigned partsTimeout = 2000;

}

void PageCurtain::cover(PageCover::Show show)
{
    _isUnprepared = true;
    _isInHurry = false;
    _timer.disconnect();
    ++_lastRequest;
    _frame.cover(show);
}

void PageCurtain::cover(PageCover::Show show, double seconds)
{
    cover(show);
    _timer = Glib::signal_timeout().connect(
        [this] {
            pageIsPrepared(Whole::Yes);
            return false;
        },
        static_cast<unsigned>(seconds * 1000));
}

void PageCurtain::hurry()
{
    if (_frame.showsPicture() && !std::exchange(_isInHurry, true) && !_isUnprepared)
        pageIsPrepared(Whole::Yes);
}

void PageCurtain::pageIsPrepared(Whole whole)
{
    _isUnprepared = false;
    if (!_frame.isCovered())
        return;
    if (whole == Whole::No && !_isInHurry && _frame.showsPicture()) {
        _timer.disconnect();
        _timer = Glib::signal_timeout().connect(
            [this] {
                pageIsPrepared(Whole::Yes);
                return false;
            },
            partsTimeout);
        return;
    }
    // The engine draws the page some time after its layout.
    const auto request = reportOfDrawing("pagoraReportPaint", ++_lastRequest);
    webkit_web_view_evaluate_javascript(_view, request.c_str(), -1, pageWorld, nullptr, nullptr, nullptr, nullptr);
    _timer.disconnect();
    _timer = Glib::signal_timeout().connect(
        [this] {
            uncover();
            return false;
        },
        paintTimeout);
}

void PageCurtain::pageIsPainted(std::uint64_t request)
{
    if (request == _lastRequest)
        uncover();
}

void PageCurtain::uncoverBeginning()
{
    if (!_isUnprepared || _frame.showsPicture())
        return;
    _isUnprepared = false;
    uncover();
}

void PageCurtain::uncover()
{
    _timer.disconnect();
    if (!_isUnprepared)
        _frame.uncover();
}

}
