#include "reader/gtk/ReaderHeader.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/DisplayText.hpp"

namespace pagora {

ReaderHeader::ReaderHeader(const Glib::RefPtr<Gtk::Builder>& layout)
    : _bar(*layout->get_widget<Gtk::HeaderBar>("headerBar"))
    , _edge(EdgeBar::Edge::Top, _bar, *layout->get_widget<Gtk::Box>("headerPlace"),
          *layout->get_widget<Gtk::Overlay>("stage"))
    , _library(*layout->get_widget<Gtk::Button>("libraryButton"))
    , _contents(*layout->get_widget<Gtk::ToggleButton>("contentsButton"))
    , _back(*layout->get_widget<Gtk::Button>("backButton"))
    , _fullScreen(*layout->get_widget<Gtk::Button>("fullScreenButton"))
    , _book(Gtk::Orientation::VERTICAL)
{
    _book.set_valign(Gtk::Align::CENTER);
    _title.add_css_class("title");
    _author.add_css_class("subtitle");
    for (auto* const label : { &_title, &_author }) {
        label->set_ellipsize(Pango::EllipsizeMode::END);
        label->set_single_line_mode(true);
        _book.append(*label);
    }
}

ReaderHeader::~ReaderHeader()
{
    for (auto& connection : _connections)
        connection.disconnect();
    if (_book.get_parent())
        gtk_header_bar_set_title_widget(_bar.gobj(), nullptr);
}

void ReaderHeader::setBook(const std::string& title, const std::string& author)
{
    _title.set_text(displayText(title));
    _author.set_text(displayText(author));
    _author.set_visible(!author.empty());
    if (!title.empty())
        _bar.set_title_widget(_book);
}

void ReaderHeader::setHistory(bool canGoBack, bool canGoForward)
{
    _back.set_visible(canGoBack || canGoForward);
    _back.set_sensitive(canGoBack);
}

void ReaderHeader::connect(Gtk::Button& button, const std::function<void()>& action)
{
    _connections.push_back(button.signal_clicked().connect(action));
}

void ReaderHeader::setFullScreen(bool isFullScreen)
{
    _edge.setFullScreen(isFullScreen);
    _fullScreen.set_icon_name(isFullScreen ? "view-restore-symbolic" : "view-fullscreen-symbolic");
    _fullScreen.set_tooltip_text(isFullScreen ? _("Leave full screen (F11)") : _("Full screen (F11)"));
}

}
