#include "fixed/gtk/PreparedPagesGtk.hpp"

#include <gtkmm/window.h>

#include <utility>

namespace pagora {

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
    const auto setFlickHandler
        = [first = shown.setFlickHandler, second = spare.setFlickHandler](const std::function<void(double)>& handler) {
              for (const auto& set : { first, second }) {
                  if (set)
                      set(handler);
              }
          };
    auto pages = std::make_unique<PreparedPagesGtk>(std::move(shown), std::move(spare));
    auto* const place = &pages->_place;
    return { std::move(pages), place, setFlickHandler };
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
