#pragma once

#include "page_view/gtk/PageEngine.hpp"
#include "tests/support/FakeInspectionHub.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtkmm/window.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora::test {

// A size of the page view, a text size and a number of columns.
struct PageSetting {
    int width;
    int height;
    double textSize;
    int columns;
};

// Returns all combinations of these.
std::vector<PageSetting> pageSettings(const std::vector<std::pair<int, int>>& sizes,
    const std::vector<double>& textSizes, const std::vector<int>& columns);

// Returns the script that counts the faults of the shown chapter: see page-faults.js.
std::string pageFaultsScript();

struct PageFault {
    long count = 0;
    // The place of each example, and its words.
    std::vector<std::string> examples;

    void add(const std::string& example)
    {
        ++count;
        examples.push_back(example);
    }
};

// The counts of a book over all its chapters and settings.
struct CheckedPages {
    long chapters = 0;
    long layouts = 0;
    long pages = 0;
    long lines = 0;
    std::map<std::string, PageFault> faults;
};

// Lays books out in the real page view, with the scripts of the reader, and counts the faults of the pages. Needs a
// display larger than all settings. Main thread only.
class PageCheck {
public:
    PageCheck();
    ~PageCheck();

    // Checks every chapter of a reflowable book in every setting. Returns nullopt if the archive is not a reflowable
    // book.
    std::optional<CheckedPages> check(const std::string& archive, const std::vector<PageSetting>& settings);
    // Sets the callback that gets a line after each chapter.
    void setProgress(std::function<void(const std::string&)> progress) { _progress = std::move(progress); }

private:
    class LoadedPage;

    bool waitUntil(const std::function<bool()>& condition);
    std::string evaluate(const std::string& script);
    void resize(int width, int height);
    bool load(const Url& chapter, const PageSetting& setting);
    void layOut(const PageSetting& setting);
    // Adds the faults of the layout. Returns false if the engine did not answer.
    bool count(CheckedPages& checked, const std::string& place);

    TemporaryFolder _folder;
    FakeInspectionHub _hub;
    std::string _script;
    // Language of the book that is checked.
    std::string _language;
    std::unique_ptr<LoadedPage> _page;
    std::unique_ptr<PageEngine> _engine;
    std::unique_ptr<PageView> _view;
    Gtk::Window _window;
    std::function<void(const std::string&)> _progress;
};

}
