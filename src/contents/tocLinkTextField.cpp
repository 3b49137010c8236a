#include "contents/tocLinkTextField.hpp"

#include "contents/ContentsPane.hpp"

namespace pagora {

tocLinkTextField::tocLinkTextField(
    ContentsPane& pane, std::int64_t tag, const Rect& frame, std::string text, Url link, std::int32_t level)
    : _pane(pane)
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
    _pane._tocView.setNeedsDisplay(_tag);
}

void tocLinkTextField::setIsActive(bool active)
{
    if (_isActive == active)
        return;
    _isActive = active;
    if (active)
        _pane._activeLink = this;
    else if (_pane._activeLink == this)
        _pane._activeLink = nullptr;
}

void tocLinkTextField::mouseEntered()
{
    if (auto* other = _pane._hoveredLink; other && other != this && !other->_isActive)
        other->setBackgroundColor(Color::clear());
    _pane._hoveredLink = this;
    if (!_isActive)
        setBackgroundColor(hoverBackground);
}

void tocLinkTextField::mouseExited()
{
    if (_pane._hoveredLink == this)
        _pane._hoveredLink = nullptr;
    if (!_isActive)
        setBackgroundColor(Color::clear());
}

void tocLinkTextField::mouseDown()
{
    if (!_isActive) {
        _pane.deactivateActiveLink();
        setIsActive(true);
        setBackgroundColor(activeBackground);
    }
    _pane._delegate.changeChapter(_link);
}

}
