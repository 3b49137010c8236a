#include "library_window/gtk/LibraryOverlay.hpp"

#include "base/Translation.hpp"

namespace pagora {

LibraryOverlay::LibraryOverlay(const Glib::RefPtr<Gtk::Builder>& layout)
    : _emptyPage(*layout->get_widget<Gtk::Widget>("emptyPage"))
    , _noMatchPage(*layout->get_widget<Gtk::Widget>("noMatchPage"))
    , _dropTarget(*layout->get_widget<Gtk::Revealer>("dropTarget"))
    , _dropLabel(*layout->get_widget<Gtk::Label>("dropLabel"))
    , _emptyPageTarget(std::make_unique<FileDropTarget>(
          _emptyPage, [this] { return _view ? _view->dropDelegate() : nullptr; },
          [this](const DropHover& hover) { showDrop(hover); }))
{
}

LibraryOverlay::~LibraryOverlay() = default;

void LibraryOverlay::update(bool isImporting)
{
    _emptyPage.set_visible(_view && _view->isEmpty() && !isImporting);
    _noMatchPage.set_visible(_view && !_view->isEmpty() && _view->shownBooks().size() == 0);
}

void LibraryOverlay::showDrop(const DropHover& hover)
{
    // When the drag leaves, the text stays while the drop target is hidden.
    if (hover.state != DropHover::State::Away) {
        const bool isRefused = hover.state == DropHover::State::Refused;
        _dropLabel.set_text(isRefused ? hover.why : _("Drop to add to the library"));
        auto& face = *_dropTarget.get_child();
        isRefused ? face.add_css_class("refused") : face.remove_css_class("refused");
    }
    _dropTarget.set_reveal_child(hover.state != DropHover::State::Away);
}

}
