#include "app/gtk/Application.hpp"

#include "app/MainController.hpp"
#include "app/gtk/LateReaderWindows.hpp"
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
#include "store/UserDefaults.hpp"

#include <glib-unix.h>

#include <chrono>
#include <csignal>
#include <utility>

namespace pagora {

namespace {

// The maximum time before a change is flushed, in seconds.
constexpr double flushDelay = 1;

// Time for which the exit waits for background work.
constexpr auto endTimeout = std::chrono::milliseconds(700);

// Time in seconds for which a start waits for an instance that is exiting.
constexpr double homeTimeout = 5;

ProgramInfo programInfo()
{
    return { documentsFolder(), cachesFolder(), homeFolder(), PAGORA_IDENTIFIER, PAGORA_VERSION };
}

std::string temporaryFolder()
{
    return appendingPathComponent(cachesFolder(), PAGORA_IDENTIFIER);
}

// Flushes changes that no other code flushes.
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

// In the order of construction; destroyed in reverse order.
struct Application::Parts {
    Parts(const Glib::RefPtr<Gtk::Application>& application, HomeOpening& home, ReaderModule& reader)
        : toplevel(application)
        , libraryWindow(toplevel, runLoop, application)
        , shortcuts(*application, toplevel.window(), [this] { return !libraryWindow.mainWindow().isVisible(); })
        , readerWindows(reader, temporaryFolder(), toplevel, runLoop)
        , defaults(home.defaults())
        , lateFlush(defaults, runLoop)
        , controller({ programInfo(), defaults, workspace, runLoop, libraryWindow, readerWindows, home.records() },
              scriptResource)
    {
        defaults.setWhenInTrouble([this](const std::string& problem) {
            runLoop.postToMainThread([this, problem] { tellOfStore(problem); });
        });
    }

    ~Parts() { defaults.setWhenInTrouble(nullptr); }

    // Shows the problem in an alert over the front window.
    void tellOfStore(const std::string& problem)
    {
        libraryWindow.runAlertPanel(_("The library’s data"), problem, _("OK"));
    }

    static std::string scriptResource(const std::string& name)
    {
        return resourceBytes("/org/pagora/Pagora/scripts/" + name + ".js").value_or("");
    }

    GLibRunLoop runLoop;
    DesktopWorkspace workspace;
    ColorScheme colorScheme;
    Toplevel toplevel;
    LibraryWindowGtk libraryWindow;
    ShortcutsHelp shortcuts;
    LateReaderWindows readerWindows;
    UserDefaults& defaults;
    LateFlush lateFlush;
    MainController controller;
};

Application::Application(Purpose purpose, std::unique_ptr<HomeOpening> home)
    : Gtk::Application(PAGORA_IDENTIFIER, Gio::Application::Flags::HANDLES_OPEN)
    , _purpose(purpose)
    , _home(std::move(home))
{
}

Application::~Application() = default;

Glib::RefPtr<Application> Application::create(Purpose purpose, std::unique_ptr<HomeOpening> home)
{
    return Glib::make_refptr_for_instance(new Application(purpose, std::move(home)));
}

void Application::on_startup()
{
    const bool hasHome = _home->take(homeTimeout);
    Gtk::Application::on_startup();
    if (!hasHome) {
        log("Pagora is already running with this home folder, out of reach; it is not started a second time.");
        return;
    }
    _parts = std::make_unique<Parts>(
        Glib::make_refptr_for_instance<Gtk::Application>((reference(), static_cast<Gtk::Application*>(this))), *_home,
        _reader);
    // The library alone is shown earlier without the module. No thread can be created while it is loaded, so the parts
    // and their threads are created first.
    if (_purpose == Purpose::Reading)
        _reader.load();
    for (const int number : { SIGTERM, SIGINT, SIGHUP })
        endOnSignal(number);
    // Keeps the program running while no window is visible.
    hold();
    _parts->controller.applicationWillFinishLaunching();
}

// On a signal, saves the reading position and quits.
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
    if (const auto& problem = _parts->defaults.openingProblem(); !problem.empty()) {
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
        _parts->defaults.synchronize();
        // Work that waits for a slow disk is abandoned. Books that are copied but not in the catalogue are imported by
        // the next launch.
        endProcessWithin(endTimeout);
        _parts->runLoop.finishBackgroundWork();
        _parts->defaults.synchronize();
        _parts = nullptr;
    }
    Gtk::Application::on_shutdown();
}

}
