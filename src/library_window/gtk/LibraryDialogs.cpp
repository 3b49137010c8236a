#include "library_window/gtk/LibraryDialogs.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "desktop/gtk/FocusMark.hpp"

#include <gtkmm/dialog.h>
#include <gtkmm/filefilter.h>
#include <gtkmm/label.h>

#include <filesystem>
#include <utility>

namespace pagora {

namespace {

// Returns the paths of the files. Files that are not on this computer have no path and are omitted.
std::vector<std::string> pathsOfFiles(const Gio::ListModel& files)
{
    std::vector<std::string> paths;
    auto* const model = const_cast<GListModel*>(files.gobj());
    for (guint i = 0; i < files.get_n_items(); ++i) {
        // Not every GFile in the model has a C++ wrapper.
        const auto file = Glib::wrap(G_FILE(g_list_model_get_item(model, i)));
        if (auto path = file->get_path(); !path.empty())
            paths.push_back(std::move(path));
    }
    return paths;
}

// A selectable text would appear selected when it gets the focus first.
void keepFocusFromTexts(Gtk::Widget& root)
{
    auto* const label = dynamic_cast<Gtk::Label*>(&root);
    if (label && label->get_selectable() && label->get_label().find("<a ") == Glib::ustring::npos)
        label->set_focusable(false);
    for (auto* child = root.get_first_child(); child; child = child->get_next_sibling())
        keepFocusFromTexts(*child);
}

}

void LibraryDialogs::runAlertPanel(const std::string& title, const std::string& message, const std::string& button)
{
    show(std::make_unique<AlertWindow>(
        _parent, title, message, std::vector<AlertWindow::Button> { { button } }, nullptr));
}

void LibraryDialogs::runAlert(const std::string& informativeText, const std::string& firstButton,
    const std::string& secondButton, std::function<void(int code)> answered)
{
    constexpr int firstCode = 1000;
    const std::vector<AlertWindow::Button> buttons { { firstButton }, { secondButton, true } };
    show(std::make_unique<AlertWindow>(_parent, "", informativeText, buttons,
        [answered = std::move(answered)](std::size_t button) { answered(firstCode + static_cast<int>(button)); }));
}

// The handler of the previous alert may show this one.
void LibraryDialogs::show(std::unique_ptr<AlertWindow> alert)
{
    _alertBefore = std::exchange(_alert, std::move(alert));
    _alert->present();
}

Glib::RefPtr<Gio::File> LibraryDialogs::startFolder()
{
    std::error_code error;
    const auto folder = std::filesystem::current_path(error);
    return error ? nullptr : Gio::File::create_for_path(folder.string());
}

MarksExportWindow& LibraryDialogs::marksExport()
{
    if (!_marksExport)
        _marksExport = std::make_unique<MarksExportWindow>(_parent);
    return *_marksExport;
}

void LibraryDialogs::runOpenPanel(const std::string& message, bool multiple, Chosen chosen)
{
    showPanel(message, Gtk::FileChooser::Action::OPEN, multiple, std::move(chosen));
}

void LibraryDialogs::runFolderPanel(const std::string& message, std::function<void(std::optional<std::string>)> chosen)
{
    showPanel(message, Gtk::FileChooser::Action::SELECT_FOLDER, false,
        [chosen = std::move(chosen)](const std::optional<std::vector<std::string>>& paths) {
            chosen(paths && !paths->empty() ? std::optional(paths->front()) : std::nullopt);
        });
}

void LibraryDialogs::showPanel(
    const std::string& message, Gtk::FileChooser::Action action, bool multiple, Chosen chosen)
{
    if (_openPanel && _openPanel->get_visible()) {
        _openPanel->show();
        chosen(std::nullopt);
        return;
    }
    _openPanel = Gtk::FileChooserNative::create(displayText(message), _parent, action, _("_Open"), _("_Cancel"));
    _openPanel->set_modal(true);
    _openPanel->set_select_multiple(multiple);
    if (action == Gtk::FileChooser::Action::OPEN) {
        const auto books = Gtk::FileFilter::create();
        books->set_name(_("EPUB books"));
        // The suffix is matched case-insensitively.
        books->add_suffix("epub");
        _openPanel->add_filter(books);
    }
    try {
        if (const auto folder = startFolder())
            _openPanel->set_current_folder(folder);
    } catch (const Glib::Error&) {
    }

    _openPanel->signal_response().connect([this, chosen = std::move(chosen)](int response) {
        std::optional<std::vector<std::string>> paths;
        if (response == static_cast<int>(Gtk::ResponseType::ACCEPT))
            paths = pathsOfFiles(*_openPanel->get_files());
        _openPanel->hide();
        chosen(std::move(paths));
    });
    _openPanel->show();
}

void LibraryDialogs::showAbout()
{
    if (!_about) {
        _about = std::make_unique<Gtk::AboutDialog>();
        _about->set_transient_for(_parent);
        _about->set_modal(true);
        _about->set_hide_on_close(true);
        _about->set_program_name("Pagora");
        _about->set_version(PAGORA_VERSION);
        _about->set_comments(_("A library and reader for books in the EPUB format"));
        _about->add_css_class("pagora");
        _about->set_logo_icon_name(PAGORA_IDENTIFIER);
        _about->set_license_type(Gtk::License::GPL_3_0);
        _about->set_copyright("© 2026 Pagora contributors");
        keepFocusMarked(*_about);
        leaveUnnamed(*_about);
        nameToolkitControls(*_about, _about->get_title());
        keepFocusFromTexts(*_about);
    }
    _about->present();
}

}
