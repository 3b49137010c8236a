#include "library_window/gtk/ImportProgress.hpp"

#include <gtkmm/revealer.h>

namespace pagora {

ImportProgress::ImportProgress(
    const Glib::RefPtr<Gtk::Builder>& layout, const std::function<void()>& stop, std::function<void()> changed)
    : _window(layout->get_widget<Gtk::Window>("indicatorWindow"))
    , indicatorWindow(*_window, changed)
    , processLabel(*layout->get_widget<Gtk::Label>("processLabel"))
    , procText(*layout->get_widget<Gtk::Label>("procText"))
    , processIndicator(*layout->get_widget<Gtk::ProgressBar>("processIndicator"))
    , progressBar(*layout->get_widget<Gtk::ProgressBar>("progressBar"))
    , stopButton(*layout->get_widget<Gtk::Button>("stopButton"))
{
    stopButton.setAction(stop);
    _connections.push_back(layout->get_widget<Gtk::Button>("indicatorStopButton")->signal_clicked().connect(stop));
    // The progress window closes only when the import has ended.
    _connections.push_back(_window->signal_close_request().connect([] { return true; }, false));
    auto& strip = *layout->get_widget<Gtk::Revealer>("progressStrip");
    const auto update = [this, &strip, changed = std::move(changed)] {
        strip.set_reveal_child(!progressBar.isHidden() || !procText.isHidden() || !stopButton.isHidden());
        changed();
    };
    for (auto* const widget :
        std::initializer_list<Gtk::Widget*> { &progressBar.widget(), &procText.widget(), &stopButton.widget() })
        _connections.push_back(widget->property_visible().signal_changed().connect(update));
}

ImportProgress::~ImportProgress()
{
    for (auto& connection : _connections)
        connection.disconnect();
}

}
