#include "app/LibraryEventMonitor.hpp"

#include "tests/app/Program.hpp"
#include "tests/support/FakeLibraryHub.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

constexpr auto KeyDown = LibraryEvent::Kind::KeyDown;
constexpr auto LeftMouseDown = LibraryEvent::Kind::LeftMouseDown;

class LibraryEventMonitorTest : public testing::Test {
protected:
    LibraryEventMonitorTest()
    {
        views.showFirstView();
        views.refreshBookView(books);
        monitor.install();
    }
    bool send(const LibraryEvent& event) { return window.monitor(event); }

    test::FakeLibraryWindow window;
    test::FakeLibraryHub hub;
    BookArray books = std::make_shared<const std::vector<BookInfoPtr>>(
        std::vector<BookInfoPtr> { std::make_shared<BookInfo>(), std::make_shared<BookInfo>() });
    LibraryViews views { window, hub, [this] { return books; } };
    int timesRemoved = 0;
    LibraryEventMonitor monitor { window, views, [this] { ++timesRemoved; } };
};

}

TEST_F(LibraryEventMonitorTest, ControlASelectsEveryBookOfTheList)
{
    views.takeTableView();
    EXPECT_TRUE(send({ KeyDown, LibraryEvent::keyA, true }));
    EXPECT_EQ(window.shown->books.selectedObjects(), *books);
}

TEST_F(LibraryEventMonitorTest, ControlASelectsEveryBookOfTheGrid)
{
    EXPECT_TRUE(send({ KeyDown, LibraryEvent::keyA, true }));
    EXPECT_EQ(window.shown->books.selectedObjects(), *books);
    EXPECT_TRUE(views.imageController()->bookCollectionView().multiSelection());
}

TEST_F(LibraryEventMonitorTest, ControlDeleteRemovesBooks)
{
    EXPECT_TRUE(send({ KeyDown, LibraryEvent::keyDelete, true }));
    EXPECT_EQ(timesRemoved, 1);
}

TEST_F(LibraryEventMonitorTest, KeysWithoutControlPass)
{
    EXPECT_FALSE(send({ KeyDown, LibraryEvent::keyDelete, false }));
    EXPECT_FALSE(send({ KeyDown, LibraryEvent::keyA, false }));
    EXPECT_EQ(timesRemoved, 0);
    EXPECT_TRUE(window.shown->books.selectionIndexes().empty());
}

TEST_F(LibraryEventMonitorTest, OtherKeysPass)
{
    EXPECT_FALSE(send({ KeyDown, 36, true }));
    EXPECT_EQ(timesRemoved, 0);
    EXPECT_TRUE(window.shown->books.selectionIndexes().empty());
}

TEST_F(LibraryEventMonitorTest, APressTellsTheListWhetherControlIsHeld)
{
    views.takeTableView();
    EXPECT_FALSE(send({ LeftMouseDown, -1, true }));
    EXPECT_TRUE(views.tableController()->bookTable().multiSelection());
    EXPECT_FALSE(send({ LeftMouseDown, -1, false }));
    EXPECT_FALSE(views.tableController()->bookTable().multiSelection());
}

TEST_F(LibraryEventMonitorTest, APressDoesNotChangeTheGrid)
{
    views.imageController()->bookCollectionView().setMultiSelection(true);
    EXPECT_FALSE(send({ LeftMouseDown, -1, false }));
    EXPECT_TRUE(views.imageController()->bookCollectionView().multiSelection());
}

TEST_F(LibraryEventMonitorTest, TheFirstEventBeginsToWatchForFullScreen)
{
    EXPECT_FALSE(monitor.observesFullScreen());
    send({ KeyDown, 36, false });
    EXPECT_TRUE(monitor.observesFullScreen());
}

TEST_F(LibraryEventMonitorTest, ARemovedMonitorHearsNothing)
{
    monitor.remove();
    EXPECT_FALSE(window.monitor);
    EXPECT_FALSE(monitor.isInstalled());
}

TEST(LaunchedMonitor, ControlAAfterTheLaunchSelectsTheWholeLibrary)
{
    test::LaunchedProgram program;
    program.import({ "Sea.epub", "Land.epub" });
    EXPECT_TRUE(program.window.monitor({ KeyDown, LibraryEvent::keyA, true }));
    EXPECT_EQ(program.window.shown->books.selectedObjects().size(), 2u);
}

TEST(LaunchedMonitor, ItsKeysActWhileABookIsRead)
{
    test::LaunchedProgram program;
    program.import({ "Sea.epub", "Land.epub" });
    program.doubleClick(0);
    ASSERT_TRUE(program.isReading());
    EXPECT_TRUE(program.window.monitor({ KeyDown, LibraryEvent::keyA, true }));
    EXPECT_EQ(program.window.shown->books.selectedObjects().size(), 2u);
    EXPECT_TRUE(program.window.monitor({ KeyDown, LibraryEvent::keyDelete, true }));
    ASSERT_EQ(program.window.questions.size(), 1u);
    EXPECT_EQ(program.window.questions[0].text, "Are You sure to remove epub(s) from library?");
    EXPECT_TRUE(program.isReading());
}

}
