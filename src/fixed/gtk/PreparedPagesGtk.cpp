#include "fixed/gtk/PreparedPagesGtk.hpp"

#include <gtkmm/window.h>

#include <utility>

namespace pagora {

namespace {

// Calls the functions of both pages, if they are set.
template <typename... Arguments>
std::function<void(Arguments...)> both(
    std::function<void(Arguments...)> first, std::function<void(Arguments...)> second)
{
    return [first = std::move(first), second = std::move(second)](Arguments... arguments) {
        for (const auto& tell : { first, second }) {
            if (tell)
                tell(arguments...);
        }
    };
}

// Shows or hides the page for assistive technology.
void setPresent(Gtk::Widget& page, bool isPresent)
{
    gtk_accessible_update_state(GTK_ACCESSIBLE(page.gobj()), GTK_ACCESSIBLE_STATE_HIDDEN, !isPresent, -1);
}

}

PreparedPagesGtk::PreparedPagesGtk(ReaderPage shown, ReaderPage spare)
    : PreparedPages(std::move(shown.webView), std::move(spare.webView))
    , _sides { { shown.widget, shown.takesKeys }, { spare.widget, spare.takesKeys } }
{
    _place.set_child(*_sides[0].widget);
    _place.add_overlay(*_sides[1].widget);
    setPresent(*_sides[1].widget, false);
}

PreparedPagesGtk::~PreparedPagesGtk()
{
    _place.remove_overlay(*_sides[1].widget);
    _place.unset_child();
}

ReaderPage PreparedPagesGtk::make(ReaderPage shown, ReaderPage spare)
{
    const auto setFlickHandler = both(shown.setFlickHandler, spare.setFlickHandler);
    const auto setNamer = both(shown.setNamer, spare.setNamer);
    const auto nameMayHaveChanged = both(shown.nameMayHaveChanged, spare.nameMayHaveChanged);
    const auto setNotice = both(shown.setNotice, spare.setNotice);
    const bool isConfined = shown.isConfined;
    auto pages = std::make_unique<PreparedPagesGtk>(std::move(shown), std::move(spare));
    auto* const made = pages.get();
    ReaderPage parts { std::move(pages), &made->_place, setFlickHandler };
    parts.takesKeys = [&pages = *made] {
        const auto& takesKeys = pages._sides[pages._shown].takesKeys;
        return takesKeys && takesKeys();
    };
    parts.setNamer = setNamer;
    parts.nameMayHaveChanged = nameMayHaveChanged;
    parts.setNotice = setNotice;
    parts.isConfined = isConfined;
    return parts;
}

void PreparedPagesGtk::didExchange(std::size_t shown)
{
    _shown = shown;
    auto& page = *_sides[shown].widget;
    auto& spare = *_sides[1 - shown].widget;
    setPresent(page, true);
    // The keyboard focus moves to the new page.
    const auto* const window = dynamic_cast<Gtk::Window*>(_place.get_root());
    const auto* const focus = window ? window->get_focus() : nullptr;
    if (focus && focus->is_ancestor(spare))
        makeFirstResponder();
    setPresent(spare, false);
}

}
