#include "contents/tocLinkTextField.hpp"

#include "contents/TocView.hpp"

namespace pagora {

void ContentsLinks::deactivateActive()
{
    if (auto* const link = active) {
        link->setIsActive(false);
        link->setBackgroundColor(Color::clear());
    }
}

tocLinkTextField::tocLinkTextField(
    ContentsLinks& links, std::int64_t tag, const Rect& frame, std::string text, Url link, std::int32_t level)
    : _links(links)
    , _tag(tag)
    , _frame(frame)
    , _text(std::move(text))
    , _link(std::move(link))
    , _indent(level * 10.0 - 5)
{
}

void tocLinkTextField::setBackgroundColor(const Color& color)
{
    if (_background == color)
        return;
    _background = color;
    _links.view.setNeedsDisplay(_tag);
}

void tocLinkTextField::setIsActive(bool active)
{
    if (_isActive == active)
        return;
    _isActive = active;
    if (active)
        _links.active = this;
    else if (_links.active == this)
        _links.active = nullptr;
}

void tocLinkTextField::mouseEntered()
{
    if (auto* other = _links.hovered; other && other != this && !other->_isActive)
        other->setBackgroundColor(Color::clear());
    _links.hovered = this;
    if (!_isActive)
        setBackgroundColor(hoverBackground);
}

void tocLinkTextField::mouseExited()
{
    if (_links.hovered == this)
        _links.hovered = nullptr;
    if (!_isActive)
        setBackgroundColor(Color::clear());
}

void tocLinkTextField::mouseDown()
{
    if (!_isActive) {
        _links.deactivateActive();
        setIsActive(true);
        setBackgroundColor(activeBackground);
    }
    _links.delegate.changeChapter(_link);
}

}
