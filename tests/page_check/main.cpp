// Counts the faults of the pages of books: check-pages [--quick] OUTPUT BOOK... writes one JSON row a book and kind.
// --quick takes one text size and the smallest view.

#include "base/Json.hpp"
#include "base/Path.hpp"
#include "tests/engine/EngineHome.hpp"
#include "tests/page_check/PageCheck.hpp"

#include <gtkmm/adjustment.h>
#include <gtkmm/application.h>
#include <gtkmm/builder.h>
#include <gtkmm/init.h>

#include <cstdio>
#include <cstring>
#include <fstream>

namespace {

using namespace pagora;
using namespace pagora::test;

// The smallest, the default and the greatest text size of the reader's window.
std::vector<double> textSizes()
{
    const auto builder = Gtk::Builder::create();
    builder->add_from_resource("/org/pagora/Pagora/ui/EpubWindow.ui", "fontSize");
    const auto range = builder->get_object<Gtk::Adjustment>("fontSize");
    return { range->get_lower(), (range->get_lower() + range->get_upper()) / 2, range->get_upper() };
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
    std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    const bool isQuick = !words.empty() && words.front() == "--quick";
    if (isQuick)
        words.erase(words.begin());
    if (words.size() < 2) {
        std::fprintf(stderr, "Usage: check-pages [--quick] OUTPUT BOOK...\n");
        return 2;
    }
    const auto application = Gtk::Application::create("org.pagora.CheckPages", Gio::Application::Flags::NON_UNIQUE);
    application->register_application();

    const auto sizes = textSizes();
    const auto settings = isQuick ? pageSettings({ { 900, 600 } }, { sizes[1] }, { 1, 2, 3 })
                                  : pageSettings({ { 900, 600 }, { 1280, 860 }, { 1920, 1080 } }, sizes, { 1, 2, 3 });
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
