// Scrolls the real library window through 10,000 covers. Measures the main thread's time for each frame, including all
// work since the previous frame. Then types searches in a library of 50,000 books and measures the time from each key
// to the results in the grid. bench-scroll FOLDER NAME... prints a "NAME VALUE" line for each figure. Needs a display
// of at least 1280 by 860.

#include "benches/data/MadeCatalogue.hpp"
#include "benches/program/MainLoop.hpp"
#include "catalogue/Catalogue.hpp"
#include "catalogue/Settings.hpp"
#include "desktop/gtk/Toplevel.hpp"
#include "library_window/gtk/LibraryWindowGtk.hpp"
#include "running/GLibRunLoop.hpp"

#include <glib.h>
#include <gtk/gtk.h>
#include <gtkmm/init.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/searchbar.h>
#include <gtkmm/searchentry.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace pagora;

constexpr int books = 10'000;
constexpr int searchedBooks = 50'000;
constexpr int rounds = 5;
// A fast flick: 1,500 frames from the start to the end, about a row of covers each.
constexpr int framesFromTopToEnd = 1'500;

double now()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Measures the time in which the main thread is busy.
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

    // Returns the busy time since the last call, in milliseconds.
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

// A library window with a grid of books whose covers are not cached.
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

    // Returns the time of each frame, in milliseconds.
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

    // Types words letter by letter and deletes them again. Returns the time of each key in milliseconds, in order.
    std::vector<double> search()
    {
        constexpr std::array words { "e", "title", "the author 4711", "9780", "no such book anywhere" };
        auto& field = *_window.outlet<Gtk::SearchEntry>("searchField");
        auto& surface = dynamic_cast<BooksSurface&>(*_view);
        int changes = 0;
        surface.setShownAction([&] { ++changes; });
        std::vector<double> times;
        // A space at the end does not change the search.
        std::string searched;
        const auto type = [&](const std::string& text) {
            const auto trimmed = text.substr(0, text.find_last_not_of(' ') + 1);
            const auto before = changes;
            const double start = now();
            field.set_text(text);
            if (std::exchange(searched, trimmed) != trimmed)
                serveUntil([&] { return changes > before; });
            times.push_back(now() - start);
            serveFor(50);
        };
        _window.outlet<Gtk::SearchBar>("searchBar")->set_search_mode(true);
        for (const std::string word : words) {
            for (std::size_t length = 1; length <= word.size(); ++length)
                type(word.substr(0, length));
            for (std::size_t length = word.size() - 1; length > 0; --length)
                type(word.substr(0, length));
            type("");
        }
        surface.setShownAction(nullptr);
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

// The records of a made library, and their store.
class MadeLibrary {
public:
    MadeLibrary(const std::string& home, int count)
        : _defaults((bench::makeCatalogue(home, count), bench::defaultsFolderIn(home)))
    {
        _catalogue.setBookData(*_defaults.objectForKey(defaults_keys::BookData)->array());
        _catalogue.bookDataToList();
    }
    BookArray books() const { return _catalogue.bookList(); }

private:
    UserDefaults _defaults;
    Catalogue _catalogue;
};

void tell(const char* what, const std::vector<double>& times)
{
    std::cerr << times.size() << ' ' << what << ": median " << part(times, 0.5) << " ms, 95th percentile "
              << part(times, 0.95) << ", 99th " << part(times, 0.99) << ", longest " << part(times, 1) << '\n';
}

void measureScrolling(const std::string& folder)
{
    const MadeLibrary library(folder + "/home", books);
    std::vector<double> results;
    for (int i = 0; i <= rounds; ++i) {
        const auto times = Grid(library.books()).scroll();
        results.push_back(part(times, 0.99));
        tell("frames", times);
    }
    results.erase(results.begin());
    std::cout << "scroll.p99_ms " << part(results, 0.5) << '\n';
}

void measureSearching(const std::string& folder)
{
    const MadeLibrary library(folder + "/large", searchedBooks);
    std::vector<double> results;
    for (int i = 0; i <= rounds; ++i) {
        auto times = Grid(library.books()).search();
        std::cerr << "the first key " << times.front() << " ms\n";
        times.erase(times.begin());
        results.push_back(part(times, 0.95));
        tell("keys", times);
    }
    results.erase(results.begin());
    std::cout << "library.filter_ms_50k " << part(results, 0.5) << '\n';
}

}

int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    const std::string folder = std::filesystem::canonical(arguments[1]).string();
    const std::set<std::string> names(arguments + 2, arguments + count);
    gtk_init();
    Gtk::init_gtkmm_internals();
    if (names.contains("scroll.p99_ms"))
        measureScrolling(folder);
    if (names.contains("library.filter_ms_50k"))
        measureSearching(folder);
}
