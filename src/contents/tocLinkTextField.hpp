#pragma once

#include "base/Geometry.hpp"
#include "base/Url.hpp"

#include <cstdint>
#include <string>

namespace pagora {

// Opens the target of a contents link.
class ContentsDelegate {
public:
    virtual ~ContentsDelegate() = default;
    virtual void changeChapter(const Url& url) = 0;
};

class TocView;
class tocLinkTextField;

// The shared state of the links of a pane. At most one link is active, and at most one is hovered.
struct ContentsLinks {
    TocView& view;
    ContentsDelegate& delegate;
    tocLinkTextField* active = nullptr;
    tocLinkTextField* hovered = nullptr;

    void deactivateActive();
};

// One line of the contents pane. The pane owns it; the view draws it and passes on pointer and key events. Main thread
// only.
class tocLinkTextField {
public:
    static constexpr double height = 20;
    static constexpr Color activeBackground = Color::white(0.15);
    static constexpr Color hoverBackground = Color::white(0.17);

    tocLinkTextField(
        ContentsLinks& links, std::int64_t tag, const Rect& frame, std::string text, Url link, std::int32_t level);

    std::int64_t tag() const { return _tag; }
    const Rect& frame() const { return _frame; }
    const std::string& text() const { return _text; }
    const std::string& toolTip() const { return _text; }
    const Url& link() const { return _link; }
    // Indentation of the first line's text, in points.
    double firstLineHeadIndent() const { return _indent; }
    // White, or dimmer for a target inside a document.
    Color textColor() const { return _link.fragment() ? Color::white(0.85) : Color::white(1); }
    const Color& backgroundColor() const { return _background; }

    bool isActive() const { return _isActive; }
    void setIsActive(bool active);

    void mouseEntered();
    void mouseExited();
    // Called for a click or the key that opens: activates the link and opens its target.
    void mouseDown();

    void setBackgroundColor(const Color& color);

private:
    ContentsLinks& _links;
    std::int64_t _tag;
    Rect _frame;
    std::string _text;
    Url _link;
    double _indent;
    Color _background = Color::clear();
    bool _isActive = false;
};

}
