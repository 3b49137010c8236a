#include "tests/app/Program.hpp"

#include <gtest/gtest.h>

namespace pagora {

using test::Program;
using Names = std::vector<std::string>;

TEST(OpeningAtLaunch, OneFileIsImportedAndOpened)
{
    Program program;
    program.keepStoredValues();
    program.controller->applicationWillFinishLaunching();
    program.controller->openFiles({ program.download("Sea.epub") });
    EXPECT_FALSE(fileExists(program.inLibrary("Sea.epub")));
    program.controller->applicationDidFinishLaunching();
    program.runLoop.runTimers();
    EXPECT_EQ(program.titles(), Names { "Sea" });
    EXPECT_TRUE(program.isReading());
    EXPECT_EQ(program.reader().window.title, "Pagora - Sea");
    EXPECT_FALSE(program.controller->state().reading._singleEpub());
    EXPECT_FALSE(program.controller->state().launch._filesToOpenByApp);
}

TEST(OpeningAtLaunch, ThePageViewOfOneFileIsPreparedBeforeItIsImported)
{
    Program program;
    program.controller->applicationWillFinishLaunching();
    program.controller->openFiles({ program.download("Sea.epub") });
    program.controller->applicationDidFinishLaunching();
    program.readerWindows.onPrepare = [&] { EXPECT_FALSE(fileExists(program.inLibrary("Sea.epub"))); };
    program.runLoop.runTimers();
    EXPECT_EQ(program.readerWindows.timesPrepared, 1);
    EXPECT_TRUE(fileExists(program.inLibrary("Sea.epub")));
}

TEST(OpeningAtLaunch, NoPageViewIsPreparedForSeveralFiles)
{
    Program program;
    program.controller->applicationWillFinishLaunching();
    program.controller->openFiles({ program.download("Sea.epub"), program.download("Land.epub") });
    program.controller->applicationDidFinishLaunching();
    program.runLoop.runTimers();
    EXPECT_EQ(program.readerWindows.timesPrepared, 0);
}

TEST(OpeningAtLaunch, AFileThatIsInTheLibraryOpensTheLastRecord)
{
    // The result is the same for both files.
    for (const auto* const name : { "Sea.epub", "Land.epub" }) {
        Program program;
        program.keepStoredValues();
        program.writeBook(program.inLibrary("Sea.epub"));
        program.writeBook(program.inLibrary("Land.epub"));
        program.controller->applicationWillFinishLaunching();
        program.controller->openFiles({ program.inLibrary(name) });
        program.controller->applicationDidFinishLaunching();
        program.runLoop.runTimers();
        EXPECT_EQ(program.catalogue().count(), 2u);
        EXPECT_EQ(program.controller->currentBook(), program.catalogue().lastBook()) << name;
    }
}

TEST(OpeningAtLaunch, SeveralFilesAreImportedAndNotOpened)
{
    Program program;
    program.controller->applicationWillFinishLaunching();
    program.controller->openFiles({ program.download("Sea.epub"), program.download("Land.epub") });
    program.controller->applicationDidFinishLaunching();
    program.runLoop.runTimers();
    EXPECT_EQ(program.titles(), (Names { "Sea", "Land" }));
    EXPECT_EQ(program.window.shown->books.content().size(), 2u);
    EXPECT_FALSE(program.isReading());
}

TEST(OpeningAtLaunch, FilesAreCopiedAlsoWhereDropsAreMoved)
{
    Program program;
    program.keepStoredValues();
    program.defaults.setObject("DragDropMode", "Move");
    program.controller->applicationWillFinishLaunching();
    program.controller->openFiles({ program.download("Sea.epub"), program.download("Land.epub") });
    program.controller->applicationDidFinishLaunching();
    program.runLoop.runTimers();
    EXPECT_TRUE(fileExists(program.inDownloads("Sea.epub")));
    EXPECT_TRUE(fileExists(program.inLibrary("Sea.epub")));
}

TEST(OpeningAtLaunch, ABrokenFileWithAnEmptyLibraryOpensNothing)
{
    Program program;
    program.controller->applicationWillFinishLaunching();
    program.controller->openFiles({ program.downloadBroken("Broken.epub") });
    program.controller->applicationDidFinishLaunching();
    program.runLoop.runTimers();
    EXPECT_FALSE(program.isReading());
    EXPECT_TRUE(program.window.alerts.empty());
}

TEST(OpeningAtLaunch, AFileThatArrivesDuringTheLaunchWaitsForItsEnd)
{
    Program program;
    program.runLoop.holdsBackground = true;
    program.launch();
    program.controller->openFiles({ program.download("Sea.epub") });
    EXPECT_FALSE(fileExists(program.inLibrary("Sea.epub")));
    EXPECT_FALSE(program.controller->state().launch._filesToOpenByApp);
    program.runLoop.holdsBackground = false;
    program.runLoop.finishBackground();
    EXPECT_EQ(program.catalogue().count(), 0u);
    EXPECT_EQ(program.reader().window.title, "Pagora - Sea");
}

TEST(OpeningAtLaunch, FilesDroppedDuringTheLaunchWaitForItsEnd)
{
    Program program;
    program.runLoop.holdsBackground = true;
    program.launch();
    program.drop({ program.download("Sea.epub") });
    program.runLoop.holdsBackground = false;
    EXPECT_EQ(program.catalogue().count(), 0u);
    program.runLoop.finishBackground();
    EXPECT_EQ(program.titles(), Names { "Sea" });
    EXPECT_TRUE(fileExists(program.inLibrary("Sea.epub")));
}

}
