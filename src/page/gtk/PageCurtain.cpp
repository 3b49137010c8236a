#include "page/gtk/PageCurtain.hpp"

#include "page/gtk/PageScripts.hpp"

#include <glibmm/main.h>

#include <string>
#include <utility>

namespace pagora {

namespace {

// In milliseconds. A page that nobody sees is not painted at all.
constexpr unsigned paintTimeout = 2000;
// How long a picture of the page stays in its place for what is still loaded.
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
    // The engine draws the page a moment after it has laid it out.
    const auto request = "pagoraReportPaint(" + std::to_string(++_lastRequest) + ")";
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
