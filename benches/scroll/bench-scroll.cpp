// Scrolls the real library window from the first of 10,000 covers to the last, by the frame clock, and measures what
// each frame takes of the main thread: all that it does from the frame before, covers that arrive and the drawing
// included. bench-scroll FOLDER NAME... prints a "NAME VALUE" line. Needs a display of at least 1280 by 860.

#include "benches/data/MadeCatalogue.hpp"
#include "catalogue/Catalogue.hpp"
#include "catalogue/Settings.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "running/GLibRunLoop.hpp"

#include <glib.h>
#include <gtk/gtk.h>
#include <gtkmm/init.h>
#include <gtkmm/scrolledwindow.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <vector>

namespace {

using namespace pagora;

constexpr int books = 10'000;
constexpr int rounds = 5;
// A fast flick: 1,500 frames from top to end are about a row of covers each.
constexpr int framesFromTopToEnd = 1'500;

double now()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Counts the time that the main thread does not wait for something to do.
class Work {
public:
    Work()
    {
        instance = this;
        _poll = g_main_context_get_poll_func(nullptr);
        g_main_context_set_poll_func(nullptr, [](GPollFD* files, guint count, gint timeout) {
            instance->_sum += now() - instance->_since;
            const auto result = instance->_poll(files, count, timeout);
            instance->_since = now();
            return result;
        });
    }
    ~Work() { g_main_context_set_poll_func(nullptr, _poll); }

    // What was counted since the last call, in milliseconds.
    double take()
    {
        const double time = now();
        const double sum = _sum + time - _since;
        _sum = 0;
        _since = time;
        return sum;
    }

private:
    static inline Work* instance = nullptr;
    GPollFunc _poll = nullptr;
    double _since = now();
    double _sum = 0;
};

void serveUntil(const std::function<bool()>& condition)
{
    while (!condition())
        g_main_context_iteration(nullptr, TRUE);
}

void serveFor(unsigned milliseconds)
{
    bool isOver = false;
    g_timeout_add_once(
        milliseconds, [](gpointer over) { *static_cast<bool*>(over) = true; }, &isOver);
    serveUntil([&] { return isOver; });
}

Gtk::ScrolledWindow* scrollerIn(Gtk::Widget& widget)
{
    if (auto* const scroller = dynamic_cast<Gtk::ScrolledWindow*>(&widget))
        return scroller;
    for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling()) {
        if (auto* const scroller = scrollerIn(*child))
            return scroller;
    }
    return nullptr;
}

// A library window with a grid of the books, none of whose covers was shown before.
class Grid {
public:
    explicit Grid(BookArray content)
    {
        _books.setContent(std::move(content));
        _view = _window.loadView("ImageView", _books);
        _window.setContentView(*_view);
        _window.window().set_default_size(1280, 860);
        _window.mainWindow().makeKeyAndOrderFront();
        serveFor(1'000);
        _adjustment = scrollerIn(_window.window())->get_vadjustment();
    }
    ~Grid()
    {
        _window.removeContentView(*_view);
        _view = nullptr;
        serveFor(100);
    }

    // The time of each frame, in milliseconds.
    std::vector<double> scroll()
    {
        Work work;
        std::vector<double> times;
        int frame = 0;
        auto& window = _window.window();
        auto* const clock = GDK_FRAME_CLOCK(g_object_ref(gtk_widget_get_frame_clock(GTK_WIDGET(window.gobj()))));
        const auto tick = window.add_tick_callback([&](const auto&) {
            const double end = _adjustment->get_upper() - _adjustment->get_page_size();
            _adjustment->set_value(end * ++frame / framesFromTopToEnd);
            return true;
        });
        struct Frames {
            Work& work;
            std::vector<double>& times;
        } frames { work, times };
        const auto painted = g_signal_connect_after(clock, "after-paint",
            G_CALLBACK(+[](GdkFrameClock*, Frames* self) { self->times.push_back(self->work.take()); }), &frames);
        serveUntil([&] { return frame >= framesFromTopToEnd; });
        g_signal_handler_disconnect(clock, painted);
        g_object_unref(clock);
        window.remove_tick_callback(tick);
        return times;
    }

private:
    ArrayController _books;
    GLibRunLoop _runLoop;
    Toplevel _toplevel;
    LibraryWindowGtk _window { _toplevel, _runLoop };
    std::unique_ptr<LibraryViewSurface> _view;
    Glib::RefPtr<Gtk::Adjustment> _adjustment;
};

double part(std::vector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    return values.at(static_cast<std::size_t>(fraction * static_cast<double>(values.size() - 1) + 0.5));
}

}

int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    const std::string home = std::filesystem::canonical(arguments[1]).string() + "/home";
    bench::makeCatalogue(home, books);
    gtk_init();
    Gtk::init_gtkmm_internals();
    UserDefaults defaults(bench::defaultsFolderIn(home));
    Catalogue catalogue;
    catalogue.setBookData(*defaults.objectForKey(defaults_keys::BookData)->array());
    catalogue.bookDataToList();
    std::vector<double> results;
    for (int i = 0; i <= rounds; ++i) {
        Grid grid(catalogue.bookList());
        const auto times = grid.scroll();
        results.push_back(part(times, 0.99));
        std::cerr << times.size() << " frames: median " << part(times, 0.5) << " ms, 95th percentile "
                  << part(times, 0.95) << ", 99th " << results.back() << ", longest " << part(times, 1) << '\n';
    }
    results.erase(results.begin());
    std::cout << "scroll.p99_ms " << part(results, 0.5) << '\n';
}
