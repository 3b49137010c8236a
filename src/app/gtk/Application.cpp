#include "app/gtk/Application.hpp"

#include "app/MainController.hpp"
#include "app/gtk/ReaderWindowFactoryGtk.hpp"
#include "app/gtk/ShortcutsHelp.hpp"
#include "base/Log.hpp"
#include "base/Path.hpp"
#include "base/Resource.hpp"
#include "base/Translation.hpp"
#include "base/UserFolders.hpp"
#include "desktop/gtk/ColorScheme.hpp"
#include "desktop/gtk/DesktopWorkspace.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "running/ExitDeadline.hpp"
#include "running/GLibRunLoop.hpp"
#include "running/Worker.hpp"
#include "store/UserDefaults.hpp"

#include <glib-unix.h>

#include <chrono>
#include <csignal>
#include <optional>
#include <utility>

namespace pagora {

namespace {

// How long what changed may wait for its flush, where no one asked for one.
constexpr double flushDelay = 1;

// How long the end waits for work in the background.
constexpr auto patienceForEnd = std::chrono::milliseconds(700);

// How long a start waits for an instance that is ending.
constexpr double patienceForHome = 5;

ProgramInfo programInfo()
{
    return { documentsFolder(), cachesFolder(), homeFolder(), PAGORA_IDENTIFIER, PAGORA_VERSION };
}

std::string temporaryFolder()
{
    return appendingPathComponent(cachesFolder(), PAGORA_IDENTIFIER);
}

// Keeps the store from staying unflushed: a change that nobody flushes reaches the disk a little later.
class LateFlush {
public:
    LateFlush(UserDefaults& defaults, RunLoop& runLoop)
        : _defaults(defaults)
        , _runLoop(runLoop)
    {
        defaults.setWhenChanged([this] {
            _runLoop.postToMainThread(
                [this] { _timer = _runLoop.performAfterDelay(flushDelay, [this] { _defaults.synchronize(); }); });
        });
    }
    ~LateFlush() { _defaults.setWhenChanged(nullptr); }

private:
    UserDefaults& _defaults;
    RunLoop& _runLoop;
    std::unique_ptr<RunLoop::Timer> _timer;
};

}

// In the order in which they are built on each other; they go the other way round.
struct Application::Parts {
    Parts(const Glib::RefPtr<Gtk::Application>& application, std::unique_ptr<UserDefaults> opened)
        : defaults(std::move(opened))
        , toplevel(application)
        , libraryWindow(toplevel, runLoop, application)
        , shortcuts(*application, toplevel.window(), [this] { return !libraryWindow.mainWindow().isVisible(); })
        , readerWindows(temporaryFolder(), toplevel)
        , lateFlush(*defaults, runLoop)
        , controller({ programInfo(), *defaults, workspace, runLoop, libraryWindow, readerWindows }, scriptResource)
    {
        defaults->setWhenInTrouble([this](const std::string& problem) {
            runLoop.postToMainThread([this, problem] { tellOfStore(problem); });
        });
    }

    ~Parts() { defaults->setWhenInTrouble(nullptr); }

    // In an alert over the window that is shown.
    void tellOfStore(const std::string& problem)
    {
        libraryWindow.runAlertPanel(_("The library’s data"), problem, _("OK"));
    }

    static std::string scriptResource(const std::string& name)
    {
        return resourceBytes("/org/pagora/Pagora/scripts/" + name + ".js").value_or("");
    }

    std::unique_ptr<UserDefaults> defaults;
    GLibRunLoop runLoop;
    DesktopWorkspace workspace;
    ColorScheme colorScheme;
    Toplevel toplevel;
    LibraryWindowGtk libraryWindow;
    ShortcutsHelp shortcuts;
    ReaderWindowFactoryGtk readerWindows;
    LateFlush lateFlush;
    MainController controller;
};

Application::Application()
    : Gtk::Application(PAGORA_IDENTIFIER, Gio::Application::Flags::HANDLES_OPEN)
    , _home(defaultsFolder())
{
}

Application::~Application() = default;

Glib::RefPtr<Application> Application::create()
{
    return Glib::make_refptr_for_instance(new Application);
}

void Application::on_startup()
{
    const bool hasHome = _home.take(patienceForHome);
    std::unique_ptr<UserDefaults> defaults;
    {
        // Reading a large library takes as long as starting the toolkit, and needs none of it.
        std::optional<Worker> opening;
        if (hasHome)
            opening.emplace().perform([&defaults] { defaults = std::make_unique<UserDefaults>(defaultsFolder()); });
        // Without a display, it ends the program below, when nothing is open.
        if (!gtk_init_check()) {
            opening.reset();
            defaults = nullptr;
        }
    }
    Gtk::Application::on_startup();
    if (!hasHome) {
        log("Pagora is already running with this home folder, out of reach; it is not started a second time.");
        return;
    }
    _parts = std::make_unique<Parts>(
        Glib::make_refptr_for_instance<Gtk::Application>((reference(), static_cast<Gtk::Application*>(this))),
        std::move(defaults));
    for (const int number : { SIGTERM, SIGINT, SIGHUP })
        endOnSignal(number);
    // The window may be hidden for a moment; the program ends when it is told to.
    hold();
    _parts->controller.applicationWillFinishLaunching();
}

// The desktop ends the session, or somebody the program: what is being read keeps its place.
void Application::endOnSignal(int number)
{
    g_unix_signal_add(
        number,
        [](gpointer self) -> gboolean {
            static_cast<Application*>(self)->quit();
            return G_SOURCE_CONTINUE;
        },
        this);
}

void Application::finishLaunching()
{
    if (_launched || !_parts)
        return;
    _launched = true;
    _parts->libraryWindow.mainWindow().makeKeyAndOrderFront();
    _parts->controller.applicationDidFinishLaunching();
    if (const auto& problem = _parts->defaults->openingProblem(); !problem.empty()) {
        log(problem);
        _parts->tellOfStore(problem);
    }
}

void Application::on_activate()
{
    if (_launched)
        _parts->controller.applicationWasReopened();
    finishLaunching();
}

void Application::on_open(const type_vec_files& files, const Glib::ustring&)
{
    if (!_parts)
        return;
    std::vector<std::string> paths;
    for (const auto& file : files) {
        if (const auto path = file->get_path(); !path.empty())
            paths.push_back(path);
    }
    _parts->controller.openFiles(std::move(paths));
    finishLaunching();
}

void Application::on_shutdown()
{
    if (_parts) {
        auto& controller = _parts->controller;
        controller.cancelProcess();
        _parts->toplevel.end();
        controller.finishReading();
        controller.applicationWillTerminate();
        _parts->defaults->synchronize();
        // What a disk or a drive keeps waiting is not waited for: books that are copied and not yet in the catalogue
        // are taken up by the next launch.
        endProcessWithin(patienceForEnd);
        _parts->runLoop.finishBackgroundWork();
        _parts->defaults->synchronize();
        _parts = nullptr;
    }
    Gtk::Application::on_shutdown();
}

}
