#include "library_window/gtk/LibraryWindowGtk.hpp"

#include "base/Translation.hpp"
#include "covers/gtk/CellText.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/FocusMark.hpp"
#include "desktop/gtk/StyleSheet.hpp"
#include "desktop/gtk/Tooltip.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "library_views/gtk/GridSurface.hpp"
#include "library_views/gtk/ListSurface.hpp"

#include <gtkmm/box.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutcontroller.h>

#include <string_view>

namespace pagora {

namespace {

constexpr const char* quitAction = "quit";

Glib::RefPtr<Gtk::Builder> loadLayout()
{
    addStyleSheet("library.css");
    return Gtk::Builder::create_from_resource("/org/pagora/Pagora/ui/LibraryWindow.ui");
}

template <typename Widget>
Widget& find(const Glib::RefPtr<Gtk::Builder>& layout, const char* name)
{
    return *layout->get_widget<Widget>(name);
}

std::unique_ptr<Gtk::Window> takeWindow(const Glib::RefPtr<Gtk::Builder>& layout, const char* name)
{
    return std::unique_ptr<Gtk::Window>(layout->get_widget<Gtk::Window>(name));
}

// Sets accessible names.
void nameParts(Gtk::Widget& root)
{
    leaveUnnamed(root);
    correctAccessibleNames(root);
    tellOfChanges(root);
}

// The action may be unset, or may replace the actions.
template <typename Action>
auto perform(const Action& action)
{
    const auto copy = action;
    using Result = decltype(copy());
    if constexpr (std::is_void_v<Result>) {
        if (copy)
            copy();
    } else {
        return copy ? copy() : Result(true);
    }
}

}

LibraryWindowGtk::LibraryWindowGtk(Toplevel& toplevel, RunLoop& runLoop, Glib::RefPtr<Gtk::Application> application)
    : _application(std::move(application))
    , _coverLoader(runLoop)
    , _finder(runLoop)
    , _layout(loadLayout())
    , _windows { takeWindow(_layout, "errorWin"), takeWindow(_layout, "settingsWin") }
    , _mainWindow(toplevel, find<Gtk::Widget>(_layout, "mainWindow"))
    , _errorWin(*_windows.error)
    , _settingsWin(*_windows.settings)
    , _errorList(find<Gtk::TextView>(_layout, "errorList"))
    , _readerButton(find<Gtk::Button>(_layout, "readerButton"))
    , _continueButton(find<Gtk::Button>(_layout, "continueButton"))
    , _bListControl(find<Gtk::Widget>(_layout, "bListControl"))
    , _dragDropMatrix(find<Gtk::Widget>(_layout, "dragDropMatrix"), 1)
    , _toolBarMenu(find<Gtk::Widget>(_layout, "toolBar"))
    , _search(_layout)
    , _overlay(_layout)
    , _progress(
          _layout, [this] { perform(_actions.cancelProcess); }, [this] { booksDidChange(); })
    , _dialogs(toplevel.window())
{
    _mainWindow.setTitle(_("Pagora"));
    addProgramActions();
    wireControls();
    wireSearch();
    _monitor.watch(toplevel.window());
    _monitor.passSelectAll(_search.field());
    nameParts(find<Gtk::Widget>(_layout, "mainWindow"));
    for (auto* const window : { _windows.error.get(), _windows.settings.get(), &_progress.window() }) {
        window->set_transient_for(toplevel.window());
        _monitor.watch(*window);
        keepFocusMarked(*window);
        nameParts(*window);
    }
}

LibraryWindowGtk::~LibraryWindowGtk()
{
    for (auto& connection : _connections)
        connection.disconnect();
}

void LibraryWindowGtk::addProgramActions()
{
    const std::pair<const char*, std::function<void()>> actions[] = {
        { "import", [this] { perform(_actions.importDialog); } },
        { "import-folder", [this] { perform(_actions.importFolder); } },
        { "export-marks", [this] { perform(_actions.exportMarks); } },
        { "search", [this] { _search.open(); } },
        { "settings", [this] { perform(_actions.openSettings); } },
        { "show-folder", [this] { perform(_actions.showLibFolderInFinder); } },
        { "reset", [this] { perform(_actions.resetAppSettings); } },
        { "help", [this] { perform(_actions.openGuide); } },
        { "about", [this] { _dialogs.showAbout(); } },
        { "test", [this] { perform(_actions.testAction); } },
        { quitAction, [this] { perform(_actions.windowShouldClose); } },
    };
    _programActions = Gio::SimpleActionGroup::create();
    for (const auto& [name, action] : actions)
        _programActions->add_action(name, action);
    addProgramKeys();
    _mainWindow.setStateAction([this] { windowStateDidChange(); });
    enableProgramActions();
}

void LibraryWindowGtk::addProgramKeys()
{
    const std::pair<const char*, const char*> shortcuts[]
        = { { "<Control>o", "app.import" }, { "<Control><Shift>o", "app.import-folder" },
              { "<Control>f", "app.search" }, { "<Control>comma", "app.settings" }, { "F1", "app.help" },
              { "<Control><Shift>F12", "app.test" }, { "<Control>q", "app.quit" } };
    if (_application) {
        for (const auto& name : _programActions->list_actions())
            _application->add_action(_programActions->lookup_action(name));
        for (const auto& [trigger, action] : shortcuts)
            _application->set_accels_for_action(action, { trigger });
        return;
    }
    window().insert_action_group("app", _programActions);
    const auto keys = Gtk::ShortcutController::create();
    keys->set_scope(Gtk::ShortcutScope::MANAGED);
    for (const auto& [trigger, action] : shortcuts)
        keys->add_shortcut(
            Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string(trigger), Gtk::NamedAction::create(action)));
    _mainWindow.addController(keys);
}

// While a book is open, the library's keys are disabled. The program can still be closed.
void LibraryWindowGtk::enableProgramActions()
{
    for (const auto& name : _programActions->list_actions()) {
        const auto action = std::dynamic_pointer_cast<Gio::SimpleAction>(_programActions->lookup_action(name));
        action->set_enabled(name == quitAction || _mainWindow.isFront());
    }
}

void LibraryWindowGtk::wireControls()
{
    _readerButton.setAction([this] { perform(_actions.readBook); });
    _continueButton.setAction([this] { perform(_actions.continueReading); });
    showOnHover(find<Gtk::Widget>(_layout, "continueButton"),
        [this] { return Glib::ustring(formatted(_("Continue reading “%s”"), _bookToContinue.c_str())); });
    _bListControl.setAction([this] { perform(_actions.bookListMode); });
    _connections = {
        find<Gtk::Button>(_layout, "saveButton").signal_clicked().connect([this] { perform(_actions.saveSettings); }),
    };
    _mainWindow.setCloseAction([this] { return perform(_actions.windowShouldClose); });
}

void LibraryWindowGtk::wireSearch()
{
    _search.setQueryAction([this] {
        if (_shown)
            _shown->queryDidChange();
    });
    _search.setOpenAction([this] {
        if (_shown)
            _finder.prepare(_shown->content());
    });
    _search.setDoneAction([this] {
        if (_shown)
            _shown->goToBooks();
    });
    _search.setCloseAction([this] {
        if (_shown)
            _shown->focusBooks();
    });
    _mainWindow.addController(_search.keys());
}

BookQuery LibraryWindowGtk::query() const
{
    auto query = _search.query();
    if (query.order == BookOrder::LastRead && _actions.booksRead)
        query.lastRead = _actions.booksRead();
    return query;
}

void LibraryWindowGtk::booksDidChange()
{
    _overlay.update(_progress.isImporting());
    if (_shown)
        _search.setCount(_shown->shownBooks().size(), _shown->content()->size());
}

// When the library is shown again after a reader, another book may be the one that was read last.
void LibraryWindowGtk::windowStateDidChange()
{
    enableProgramActions();
    if (!_mainWindow.isFront())
        return;
    updateContinueButton();
    if (_shown && _search.query().order == BookOrder::LastRead)
        _shown->queryDidChange();
}

void LibraryWindowGtk::updateContinueButton()
{
    const auto book = _actions.bookToContinue ? _actions.bookToContinue() : nullptr;
    _continueButton.setHidden(!book);
    _bookToContinue = book ? cellText(book->title()) : Glib::ustring();
}

std::unique_ptr<LibraryViewSurface> LibraryWindowGtk::loadView(const char* layout, ArrayController& books)
{
    std::unique_ptr<BooksSurface> view;
    if (std::string_view(layout) == "TableView")
        view = std::make_unique<ListSurface>(books, _finder, _coverLoader);
    else
        view = std::make_unique<GridSurface>(books, _finder, _coverLoader);
    view->setQuery([this] { return query(); });
    view->setContentAction([this] { updateContinueButton(); });
    view->setShownAction([this, made = view.get()] {
        if (made == _shown)
            booksDidChange();
    });
    view->setDragAction([this](const DropHover& hover) { _overlay.showDrop(hover); });
    return view;
}

bool LibraryWindowGtk::isActive() const
{
    return _mainWindow.isKeyWindow() || _errorWin.isKeyWindow() || _progress.indicatorWindow.isKeyWindow()
        || _settingsWin.isKeyWindow();
}

void LibraryWindowGtk::setContentView(LibraryViewSurface& view)
{
    _shown = dynamic_cast<BooksSurface*>(&view);
    _overlay.setView(_shown);
    if (_shown)
        find<Gtk::Box>(_layout, "contentView").append(_shown->widget());
}

void LibraryWindowGtk::removeContentView(LibraryViewSurface& view)
{
    auto* const surface = dynamic_cast<BooksSurface*>(&view);
    if (!surface || surface != _shown)
        return;
    find<Gtk::Box>(_layout, "contentView").remove(surface->widget());
    _shown = nullptr;
    _overlay.setView(nullptr);
}

void LibraryWindowGtk::terminate()
{
    if (_application)
        _application->quit();
}

void LibraryWindowGtk::runAlert(const std::string& informativeText, const std::string& firstButton,
    const std::string& secondButton, std::function<void(int code)> answered)
{
    _dialogs.runAlert(informativeText, firstButton, secondButton, std::move(answered));
}

void LibraryWindowGtk::runAlertPanel(const std::string& title, const std::string& message, const std::string& button)
{
    _dialogs.runAlertPanel(title, message, button);
}

void LibraryWindowGtk::runOpenPanel(const std::string& message, bool multiple, LibraryDialogs::Chosen chosen)
{
    _dialogs.runOpenPanel(message, multiple, std::move(chosen));
}

void LibraryWindowGtk::runFolderPanel(
    const std::string& message, std::function<void(std::optional<std::string>)> chosen)
{
    _dialogs.runFolderPanel(message, std::move(chosen));
}

}
