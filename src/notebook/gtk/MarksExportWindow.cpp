#include "notebook/gtk/MarksExportWindow.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "desktop/gtk/FocusMark.hpp"
#include "notebook/gtk/MarkRow.hpp"

#include <glibmm/main.h>
#include <gtkmm/dialog.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>
#include <gtkmm/stringlist.h>

#include <initializer_list>
#include <utility>

namespace pagora {

namespace {

// In pixels.
constexpr int margin = 18;
constexpr int width = 420;

constexpr ExportFormat listedFormats[] = { ExportFormat::Markdown, ExportFormat::Html, ExportFormat::Annotation };
constexpr Mark::Kind listedKinds[] = { Mark::Kind::Bookmark, Mark::Kind::Highlight, Mark::Kind::Note };

void fill(Gtk::DropDown& list, const std::vector<Glib::ustring>& titles)
{
    list.set_model(Gtk::StringList::create(titles));
    list.set_hexpand(true);
}

}

MarksExportWindow::MarksExportWindow(Gtk::Window& parent)
    : _parent(parent)
    , _box(Gtk::Orientation::VERTICAL, margin)
    , _cancelButton(_("Cancel"))
    , _folderButton(_("Choose Folder…"))
{
    fill(_formats, { _("Markdown (.md)"), _("Web page (.html)"), _("Marks (.annotation)") });
    fill(_kinds, { _("All marks"), _("Bookmarks"), _("Highlights"), _("Notes") });
    std::vector<Glib::ustring> colors { _("All colours") };
    for (const auto color : markColors)
        colors.push_back(colorTitle(nameOf(color)));
    fill(_colors, colors);
    _tag.set_placeholder_text(_("All tags"));
    _grid.set_row_spacing(8);
    _grid.set_column_spacing(12);
    addField(_("Format"), _formats);
    addField(_("Kind"), _kinds);
    addField(_("Colour"), _colors);
    addField(_("Tag"), _tag);
    _line.set_text(_("Each book with marks becomes a file in the folder that you choose."));
    _line.set_wrap(true);
    _line.set_xalign(0);
    makeStatus(_line);
    setAccessibleName(_progress, _("Export Marks"));
    _progress.set_visible(false);
    _buttons.set_spacing(8);
    _buttons.set_halign(Gtk::Align::END);
    _buttons.append(_cancelButton);
    _buttons.append(_folderButton);
    _folderButton.add_css_class("suggested-action");
    for (Gtk::Widget* const part : std::initializer_list<Gtk::Widget*> { &_grid, &_line, &_progress, &_buttons })
        _box.append(*part);
    _box.set_margin(margin);
    _window.set_child(_box);
    _window.set_title(_("Export Marks"));
    _window.set_default_size(width, -1);
    _window.set_resizable(false);
    _window.set_modal(true);
    _window.set_hide_on_close(true);
    _window.set_transient_for(parent);
    keepFocusMarked(_window);
    const auto keys = Gtk::ShortcutController::create();
    keys->add_shortcut(
        Gtk::Shortcut::create(Gtk::KeyvalTrigger::create(GDK_KEY_Escape), Gtk::NamedAction::create("window.close")));
    _window.add_controller(keys);
    _cancelButton.signal_clicked().connect([this] { leave(); });
    _folderButton.signal_clicked().connect([this] { chooseFolder(); });
    _window.signal_close_request().connect(
        [this] {
            leave();
            return true;
        },
        false);
}

void MarksExportWindow::addField(const char* title, Gtk::Widget& field)
{
    auto* const label = Gtk::make_managed<Gtk::Label>(title);
    label->set_xalign(0);
    _grid.attach(*label, 0, _fields);
    _grid.attach(field, 1, _fields);
    ++_fields;
    setAccessibleName(field, title);
}

void MarksExportWindow::open(std::function<void(const MarksExportRequest&)> start, std::function<void()> cancel)
{
    _start = std::move(start);
    _cancel = std::move(cancel);
    if (!_isRunning) {
        _line.set_text(_("Each book with marks becomes a file in the folder that you choose."));
        _cancelButton.set_label(_("Cancel"));
    }
    _window.present();
    _folderButton.grab_focus();
}

void MarksExportWindow::chooseFolder()
{
    _chooser = Gtk::FileChooserNative::create(
        _("Export Marks"), _window, Gtk::FileChooser::Action::SELECT_FOLDER, _("Export"), _("Cancel"));
    _chooser->set_modal(true);
    _chooser->signal_response().connect([this](int response) {
        const auto file = response == Gtk::ResponseType::ACCEPT ? _chooser->get_file() : nullptr;
        // Deferred, because the chooser must not be hidden in its own signal.
        Glib::signal_idle().connect_once([chooser = std::exchange(_chooser, {})] { chooser->hide(); });
        if (file && !file->get_path().empty())
            exportInto(file->get_path());
    });
    _chooser->show();
}

void MarksExportWindow::exportInto(const std::string& folder)
{
    MarksExportRequest request { listedFormats[_formats.get_selected()], {}, folder };
    if (_kinds.get_selected() > 0)
        request.filter.kinds.insert(listedKinds[_kinds.get_selected() - 1]);
    if (_colors.get_selected() > 0)
        request.filter.colors.insert(markColors[_colors.get_selected() - 1]);
    if (!_tag.get_text().empty())
        request.filter.tags.insert(_tag.get_text());
    setRunning(true);
    _start(request);
}

void MarksExportWindow::setProgress(std::size_t done, std::size_t count)
{
    _line.set_text(formatted(plural("%lu of %lu book", "%lu of %lu books", count), done, count));
    _progress.set_fraction(static_cast<double>(done) / static_cast<double>(count));
}

void MarksExportWindow::setOutcome(const std::string& line)
{
    setRunning(false);
    _line.set_text(displayText(line));
    _cancelButton.set_label(_("Close"));
}

void MarksExportWindow::setRunning(bool isRunning)
{
    _isRunning = isRunning;
    _grid.set_sensitive(!isRunning);
    _folderButton.set_sensitive(!isRunning);
    _progress.set_visible(isRunning);
    _progress.set_fraction(0);
    _cancelButton.set_label(_("Cancel"));
}

void MarksExportWindow::leave()
{
    if (_isRunning)
        return _cancel();
    _window.set_visible(false);
    _parent.present();
}

}
