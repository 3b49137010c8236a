#include "base/Bounds.hpp"
#include "epub/NavigationDocument.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/ResourceUse.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace pagora {

namespace {

constexpr std::size_t documentBytes = 8'000'000;

std::string repeated(const std::string& text)
{
    std::string all;
    all.reserve(documentBytes + text.size());
    while (all.size() < documentBytes)
        all += text;
    return all;
}

std::string list(const std::string& entries)
{
    return "<nav epub:type='toc'><ol>" + entries + "</ol></nav>";
}

// The document of a book that is replaced by an attack.
struct Attack {
    const char* name;
    // The number of contents entries.
    std::size_t entries;
    std::function<std::string()> navigation;
    std::function<std::string()> package = {};
    std::function<std::string()> container = {};
};

std::vector<Attack> attacks()
{
    const auto most = BookLimits().contentsEntries;
    return {
        { "250,000 entries", most, [] { return list(repeated("<li><a href='a'>e</a></li>")); } },
        { "headings without an entry", 0, [] { return list(repeated("<li><span>e</span></li>")); } },
        { "headings before one entry", most,
            [] { return list(repeated("<li><span>e</span></li>") + "<li><a href='a'>e</a></li>"); } },
        { "2,000,000 lists in each other", 1, [] { return list(repeated("<ol>") + "<li><a href='a'>e</a></li>"); } },
        { "a label of 8 MB", 1, [] { return list("<a href='a'>" + repeated("label ") + "</a>"); } },
        { "a label of references", 1, [] { return list("<a href='a'>" + repeated("&#x1D54F;") + "</a>"); } },
        { "a label of pictures", 1, [] { return list("<a href='a'>" + repeated("<img alt='x'/>") + "</a>"); } },
        { "a target of 8 MB", 0, [] { return list("<a href='a#" + repeated("\xC3\xA9") + "'>e</a>"); } },
        { "a target of many steps", 0, [] { return list("<a href='" + repeated("../") + "a'>e</a>"); } },
        { "2,651 long targets", 2'651,
            [] { return list(repeated("<a href='a#" + std::string(3'000, 't') + "'>e</a>")); } },
        { "a comment in each comment", 0, [] { return list(repeated("<!-- ")); } },
        { "tags that do not end", 0, [] { return list(repeated("<a href='")); } },
        { "signs that begin nothing", 1, [] { return list("<a href='a'>" + repeated("<")); } },
        { "a document type without an end", 0, [] { return "<!DOCTYPE h [" + repeated("<!-- --><!E '"); } },
        { "scripts without an end", 0, [] { return repeated("<script></"); } },
        { "a type of 4,000,000 words", 0, [] { return "<nav epub:type='" + repeated("a ") + "'><ol/></nav>"; } },
        { "UTF-16 of characters that become longer", 0, [] { return "\xFE\xFF" + repeated("\x4E\x00\x4E\x01"); } },
        { "an encoding that nobody knows", 0,
            [] { return "<?xml encoding='" + std::string(900, 'e') + "'?>" + repeated("\xFF"); } },
        { "properties of 4,000,000 words in the package document", 0, [] { return list("<a href='a'>e</a>"); },
            [] { return "<package><item href='nav' properties='" + repeated("a ") + "'/></package>"; } },
        { "400,000 items in the package document", 0, [] { return list("<a href='a'>e</a>"); },
            [] { return "<package>" + repeated("<item properties='x'/>") + "</package>"; } },
        { "250,000 package documents", 0, [] { return list("<a href='a'>e</a>"); }, {},
            [] { return "<c>" + repeated("<rootfile media-type='x'/>") + "</c>"; } },
        { "a navigation document of a long name", 0, [] { return list("<a href='a'>e</a>"); },
            [] { return "<package><item properties='nav' href='" + repeated("n/../") + "'/></package>"; } },
    };
}

class HostileNavigation : public testing::TestWithParam<std::size_t> { };

}

// One attack on the documents that are read in the main process when a book is opened.
TEST_P(HostileNavigation, TakesNoMoreThanItMay)
{
    const auto attack = attacks().at(GetParam());
    const test::TemporaryFolder folder;
    const auto container = attack.container ? attack.container() : "<c><rootfile full-path='p.opf'/></c>";
    const auto package = attack.package ? attack.package() : "<package><item href='nav' properties='nav'/></package>";
    const auto navigation = attack.navigation();
    test::makeFile(folder.path("META-INF/container.xml"), container);
    test::makeFile(folder.path("p.opf"), package);
    test::makeFile(folder.path("nav"), navigation);

    std::size_t entries = 0;
    const auto used = test::usedBy([&] { entries = navigationListsOf(folder.path()).contents.size(); });

    EXPECT_EQ(entries, attack.entries) << attack.name;
    test::expectLittleWork(
        attack.name, container.size() + package.size() + navigation.size(), used, std::to_string(entries) + " entries");
}

INSTANTIATE_TEST_SUITE_P(Opened, HostileNavigation, testing::Range(std::size_t { 0 }, attacks().size()));

}
