#include "running/GLibRunLoop.hpp"
#include "tests/app/Program.hpp"

#include <glib.h>

#include <algorithm>
#include <gtest/gtest.h>

namespace pagora {

using Names = std::vector<std::string>;

namespace {

// The program with real background threads.
struct OverlappingDrops : testing::Test {
    OverlappingDrops()
    {
        program.beginLaunch();
        runUntil([this] { return !program.controller->state().launch._initProcessing(); });
    }
    ~OverlappingDrops() override
    {
        program.controller->applicationWillTerminate();
        program.runLoop.finishBackgroundWork();
    }

    template <typename Condition>
    void runUntil(Condition condition)
    {
        while (!condition())
            g_main_context_iteration(nullptr, TRUE);
    }
    Names downloads(const std::string& prefix, int count)
    {
        Names files;
        for (int i = 0; i < count; ++i)
            files.push_back(program.download(prefix + std::to_string(i) + ".epub"));
        return files;
    }
    std::size_t shownBooks() { return program.window.shown->books.content().size(); }

    test::ProgramOn<GLibRunLoop> program;
};

}

TEST_F(OverlappingDrops, ImportEveryBookOfBoth)
{
    const auto first = downloads("Sea", 4);
    const auto second = downloads("Land", 4);
    program.drop(first);
    program.drop(second);
    runUntil([this] { return shownBooks() == 8 && !program.controller->import().isUnderWay(); });
    auto titles = program.titles();
    EXPECT_TRUE(titles.front() == "Sea0" ? titles[3] == "Sea3" : titles[3] == "Land3");
    std::sort(titles.begin(), titles.end());
    EXPECT_EQ(titles, (Names { "Land0", "Land1", "Land2", "Land3", "Sea0", "Sea1", "Sea2", "Sea3" }));
    EXPECT_EQ(program.catalogue().epubLocations().size(), 8u);
    EXPECT_EQ(program.storedCount(), 8u);
}

TEST_F(OverlappingDrops, OfTheSameFilesImportThemOnce)
{
    const auto files = downloads("Sea", 3);
    auto both = files;
    both.push_back(program.download("Last.epub"));
    program.drop(files);
    program.drop(both);
    runUntil([this] { return shownBooks() == 4; });
    auto titles = program.titles();
    std::sort(titles.begin(), titles.end());
    EXPECT_EQ(titles, (Names { "Last", "Sea0", "Sea1", "Sea2" }));
}

TEST_F(OverlappingDrops, ShowWhatEachRejected)
{
    program.drop({ program.downloadBroken("One.epub"), program.download("Sea.epub") });
    program.drop({ program.downloadBroken("Two.epub"), program.download("Land.epub") });
    std::string shown;
    program.window.errorListFake.whenSet = [&shown](const std::string& text) { shown += text + "\n"; };
    runUntil([&] { return shownBooks() == 2 && std::count(shown.begin(), shown.end(), '\n') == 2; });
    EXPECT_NE(shown.find("One.epub --> "), std::string::npos);
    EXPECT_NE(shown.find("Two.epub --> "), std::string::npos);
}

TEST_F(OverlappingDrops, LeaveTheMainThreadFreeToReadABook)
{
    program.drop(downloads("Sea", 1));
    runUntil([this] { return shownBooks() == 1; });
    program.drop(downloads("Land", 4));
    program.controller->sendDoubleClick(program.book(0));
    runUntil([this] { return !program.reader().webView.loads.empty(); });
    program.controller->openFiles({ program.download("Sky.epub") });
    runUntil([this] { return program.reader().window.title == "Pagora - Sky"; });
    program.closeReader();
    runUntil([this] { return shownBooks() == 5; });
    EXPECT_EQ(program.storedCount(), 5u);
}

TEST_F(OverlappingDrops, StoppedByTheEndOfTheProgramKeepEveryBookThatCameIn)
{
    const auto files = downloads("Sea", 6);
    program.window.procTextFake.whenSet = [this](const std::string& text) {
        // Some numbers are skipped.
        if (text >= "3 of 6" && text.ends_with(" of 6"))
            program.controller->applicationWillTerminate();
    };
    program.drop(files);
    program.drop(downloads("Land", 2));
    runUntil([this] { return shownBooks() > 0; });
    program.runLoop.finishBackgroundWork();
    EXPECT_EQ(program.storedCount(), program.catalogue().count());
    EXPECT_EQ(folderEntries(program.home.path("Documents/ePubLibrary"))->size(), program.storedCount());
    for (const auto& file : files)
        EXPECT_TRUE(fileExists(file));
}

}
