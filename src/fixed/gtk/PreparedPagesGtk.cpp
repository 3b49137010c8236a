#include "fixed/gtk/PreparedPagesGtk.hpp"

#include <gtkmm/window.h>

#include <utility>

namespace pagora {

namespace {

// Tells both pages, where they want to know.
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

}

PreparedPagesGtk::PreparedPagesGtk(ReaderPage shown, ReaderPage spare)
    : PreparedPages(std::move(shown.webView), std::move(spare.webView))
    , _widgets { shown.widget, spare.widget }
{
    _place.set_child(*_widgets[0]);
    _place.add_overlay(*_widgets[1]);
}

PreparedPagesGtk::~PreparedPagesGtk()
{
    _place.remove_overlay(*_widgets[1]);
    _place.unset_child();
}

ReaderPage PreparedPagesGtk::make(ReaderPage shown, ReaderPage spare)
{
    const auto setFlickHandler = both(shown.setFlickHandler, spare.setFlickHandler);
    const auto setNamer = both(shown.setNamer, spare.setNamer);
    const auto nameMayHaveChanged = both(shown.nameMayHaveChanged, spare.nameMayHaveChanged);
    const auto setNotice = both(shown.setNotice, spare.setNotice);
    auto pages = std::make_unique<PreparedPagesGtk>(std::move(shown), std::move(spare));
    auto* const place = &pages->_place;
    ReaderPage parts { std::move(pages), place, setFlickHandler };
    parts.setNamer = setNamer;
    parts.nameMayHaveChanged = nameMayHaveChanged;
    parts.setNotice = setNotice;
    return parts;
}

void PreparedPagesGtk::didExchange(std::size_t shown)
{
    // The keyboard goes with the page.
    const auto* const window = dynamic_cast<Gtk::Window*>(_place.get_root());
    const auto* const focus = window ? window->get_focus() : nullptr;
    if (focus && focus->is_ancestor(*_widgets[1 - shown]))
        makeFirstResponder();
}

}
