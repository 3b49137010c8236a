// Counts the faults of the pages of books: check-pages [OPTION] OUTPUT BOOK... writes one JSON row a book and kind.
// --quick takes one text size and the smallest view, --at WIDTH HEIGHT TEXT-SIZE COLUMNS a single layout.

#include "base/Json.hpp"
#include "base/Path.hpp"
#include "base/UserFolders.hpp"
#include "desktop/gtk/BookFonts.hpp"
#include "tests/engine/EngineHome.hpp"
#include "tests/page_check/PageCheck.hpp"

#include <gtkmm/adjustment.h>
#include <gtkmm/application.h>
#include <gtkmm/builder.h>
#include <gtkmm/init.h>

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace {

using namespace pagora;
using namespace pagora::test;

// Returns the minimum, default and maximum text size of the reader window.
std::vector<double> textSizes()
{
    const auto builder = Gtk::Builder::create();
    builder->add_from_resource("/org/pagora/Pagora/ui/EpubWindow.ui", "fontSize");
    const auto range = builder->get_object<Gtk::Adjustment>("fontSize");
    return { range->get_lower(), (range->get_lower() + range->get_upper()) / 2, range->get_upper() };
}

// Removes an option and its values from the start of the words and returns them; empty if there is none.
std::vector<std::string> takeOption(std::vector<std::string>& words)
{
    const std::size_t length = words.empty() ? 0 : words.front() == "--quick" ? 1 : words.front() == "--at" ? 5 : 0;
    const auto end = words.begin() + static_cast<std::ptrdiff_t>(std::min(length, words.size()));
    std::vector<std::string> option(words.begin(), end);
    words.erase(words.begin(), end);
    return option;
}

std::vector<PageSetting> settingsFor(const std::vector<std::string>& option)
{
    const auto sizes = textSizes();
    if (option.empty())
        return pageSettings({ { 900, 600 }, { 1280, 860 }, { 1920, 1080 } }, sizes, { 1, 2, 3 });
    if (option.size() == 1)
        return pageSettings({ { 900, 600 } }, { sizes[1] }, { 1, 2, 3 });
    return pageSettings(
        { { std::stoi(option[1]), std::stoi(option[2]) } }, { std::stod(option[3]) }, { std::stoi(option[4]) });
}

Value row(const std::string& book, const std::string& kind, const CheckedPages& checked, const PageFault& fault)
{
    Value::Array examples(fault.examples.begin(), fault.examples.end());
    return Value::Dictionary { { "book", book }, { "kind", kind }, { "count", std::int64_t(fault.count) },
        { "chapters", std::int64_t(checked.chapters) }, { "layouts", std::int64_t(checked.layouts) },
        { "pages", std::int64_t(checked.pages) }, { "lines", std::int64_t(checked.lines) }, { "examples", examples } };
}

}

int main(int argumentCount, char** arguments)
{
    const EngineHome home;
    useBookFonts(cachesFolder() + "/fonts.conf");
    std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    const auto option = takeOption(words);
    if (words.size() < 2) {
        std::fprintf(stderr, "Usage: check-pages [--quick | --at WIDTH HEIGHT TEXT-SIZE COLUMNS] OUTPUT BOOK...\n");
        return 2;
    }
    const auto application = Gtk::Application::create("org.pagora.CheckPages", Gio::Application::Flags::NON_UNIQUE);
    application->register_application();

    const auto settings = settingsFor(option);
    PageCheck check;
    Value::Array rows;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const auto name = deletingPathExtension(lastPathComponent(words[i]));
        const auto checked = check.check(words[i], settings);
        if (!checked) {
            std::printf("%s: no reflowable book\n", name.c_str());
            continue;
        }
        std::printf("%s: %ld pages, %ld lines in %ld layouts\n", name.c_str(), checked->pages, checked->lines,
            checked->layouts);
        for (const auto& [kind, fault] : checked->faults) {
            rows.push_back(row(name, kind, *checked, fault));
            if (fault.count)
                std::printf("  %7ld %s\n", fault.count, kind.c_str());
        }
        std::fflush(stdout);
    }
    std::ofstream(words.front()) << jsonText(rows) << "\n";
    return 0;
}
