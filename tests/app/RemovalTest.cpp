#include "tests/app/ThreeBooks.hpp"

namespace pagora {

namespace {

struct Removal : ThreeBooks {
    bool press(int keyCode, bool control)
    {
        return program.window.monitor({ LibraryEvent::Kind::KeyDown, keyCode, control });
    }
    auto& question() { return program.window.questions.back(); }
};

}

TEST_F(Removal, ControlDeleteRemovesTheSelectedBooks)
{
    program.window.shown->select({ 0, 2 });
    EXPECT_TRUE(press(LibraryEvent::keyDelete, true));
    question().answered(goForward);
    EXPECT_EQ(program.titles(), (Names { "Plan" }));
    EXPECT_EQ(program.storedCount(), 1U);
}

TEST_F(Removal, PlainDeleteDoesNothingSpecial)
{
    program.window.shown->select({ 0 });
    EXPECT_FALSE(press(LibraryEvent::keyDelete, false));
    EXPECT_TRUE(program.window.questions.empty());
}

TEST_F(Removal, AsksWithCancelFirst)
{
    program.window.shown->select({ 0 });
    press(LibraryEvent::keyDelete, true);
    EXPECT_EQ(question().text, "Are You sure to remove epub(s) from library?");
    EXPECT_EQ(question().firstButton, "Cancel");
    EXPECT_EQ(question().secondButton, "Remove from library");
}

TEST_F(Removal, CancelLeavesEverything)
{
    program.window.shown->select({ 0 });
    press(LibraryEvent::keyDelete, true);
    question().answered(cancel);
    EXPECT_EQ(program.storedCount(), 3U);
    EXPECT_TRUE(program.window.readerButtonFake.isEnabled());
    EXPECT_TRUE(program.workspace.recycled.empty());
}

TEST_F(Removal, MovesTheArchivesToTheTrash)
{
    program.window.shown->select({ 1 });
    press(LibraryEvent::keyDelete, true);
    question().answered(goForward);
    EXPECT_EQ(program.workspace.recycled, (Names { program.inLibrary("Plan.epub") }));
    EXPECT_FALSE(program.window.readerButtonFake.isEnabled());
}

TEST_F(Removal, AsksNothingWhenNoCoverIsSelected)
{
    program.window.shown->select({});
    press(LibraryEvent::keyDelete, true);
    EXPECT_TRUE(program.window.questions.empty());
}

TEST_F(Removal, OfEverythingSelectedInTheListEmptiesTheLibrary)
{
    program.controller->takeTableView();
    EXPECT_TRUE(press(LibraryEvent::keyA, true));
    press(LibraryEvent::keyDelete, true);
    question().answered(goForward);
    EXPECT_EQ(program.storedCount(), 0U);
    EXPECT_TRUE(program.catalogue().bookList()->empty());
}

TEST_F(Removal, TakesTheFirstBookOfTheIdentifierAndTrashesTheChosenArchive)
{
    program.drop({ program.download("Copy.epub", EpubBuilder().identifier("Sea")) });
    program.controller->deleteItemFromCollection(program.book(3), ByRemovingFromDisk::Yes);
    EXPECT_EQ(program.titles(), (Names { "Plan", "Tale", "Copy" }));
    EXPECT_EQ(program.workspace.recycled, (Names { program.inLibrary("Copy.epub") }));
}

TEST_F(Removal, OfTheBookThatIsReadForgetsIt)
{
    program.doubleClick(0);
    program.controller->deleteItemFromCollection(program.book(0), ByRemovingFromDisk::No);
    EXPECT_EQ(program.controller->currentBook(), nullptr);
}

TEST_F(Removal, OfABookWhoseIdentifierIsUnknownStillTrashesItsArchive)
{
    const auto stranger = std::make_shared<BookInfo>();
    stranger->setIsbn("Stranger");
    stranger->setEpubPath(program.inLibrary("Stranger.epub"));
    program.controller->deleteItemFromCollection(stranger, ByRemovingFromDisk::Yes);
    EXPECT_EQ(program.storedCount(), 3U);
    EXPECT_EQ(program.workspace.recycled, (Names { program.inLibrary("Stranger.epub") }));
}

TEST_F(Removal, OfABookWhoseArchiveIsMissingSaysNothing)
{
    removeItem(program.inLibrary("Plan.epub"));
    program.workspace.trashFails = true;
    program.controller->deleteItemFromCollection(program.book(1), ByRemovingFromDisk::Yes);
    program.runLoop.runPosted();
    EXPECT_EQ(program.titles(), (Names { "Sea", "Tale" }));
    EXPECT_TRUE(program.window.alerts.empty());
}

TEST_F(Removal, WhereThereIsNoTrashDeletesNothingAndSaysSo)
{
    program.workspace.withoutTrash.insert(program.inLibrary("Plan.epub"));
    program.controller->deleteItemFromCollection(program.book(1), ByRemovingFromDisk::Yes);
    program.runLoop.runPosted();
    EXPECT_EQ(program.storedCount(), 3U);
    EXPECT_TRUE(program.workspace.recycled.empty());
    ASSERT_EQ(program.window.alerts.size(), 1U);
    EXPECT_EQ(program.window.alerts[0].title, "There is no Trash for this");
    EXPECT_NE(program.window.alerts[0].message.find("“Plan.epub”"), std::string::npos);
}

TEST_F(Removal, ThatTheTrashRefusesSaysThatTheFileIsStillThere)
{
    program.workspace.trashFails = true;
    program.controller->deleteItemFromCollection(program.book(1), ByRemovingFromDisk::Yes);
    program.runLoop.runPosted();
    ASSERT_EQ(program.window.alerts.size(), 1U);
    EXPECT_EQ(program.window.alerts[0].title, "Not moved to the Trash");
    EXPECT_TRUE(fileExists(program.inLibrary("Plan.epub")));
}

TEST_F(Removal, WithoutRemovingFromDiskLeavesTheArchive)
{
    program.controller->deleteItemFromCollection(program.book(1), ByRemovingFromDisk::No);
    EXPECT_EQ(program.titles(), (Names { "Sea", "Tale" }));
    EXPECT_TRUE(program.workspace.recycled.empty());
}

TEST_F(Removal, FromTheContextMenuOfTheListRemovesTheSelectedBook)
{
    program.controller->takeTableView();
    program.window.shown->rightClick(2);
    program.window.shown->choose("Move to Trash");
    question().answered(goForward);
    EXPECT_EQ(program.titles(), (Names { "Sea", "Plan" }));
    EXPECT_EQ(program.window.shown->books.content().size(), 2U);
}

TEST_F(Removal, IsNotedUntilTheArchiveIsInTheTrash)
{
    program.runLoop.holdsBackground = true;
    program.controller->deleteItemsFromLibrary({ program.book(0), program.book(2) });
    EXPECT_EQ(program.defaults.objectForKey("Removals"),
        Value(Value::Array { program.inLibrary("Sea.epub"), program.inLibrary("Tale.epub") }));
    program.runLoop.finishBackground();
    program.runLoop.runPosted();
    EXPECT_FALSE(program.defaults.hasKey("Removals"));
}

TEST_F(Removal, UnderWayIsNotUndoneByAReset)
{
    program.runLoop.holdsBackground = true;
    program.controller->deleteItemsFromLibrary({ program.book(0) });
    program.controller->resetAppSettings();
    program.runLoop.finishBackground();
    program.runLoop.runPosted();
    EXPECT_EQ(program.catalogue().count(), 2u);
}

TEST(RemovalAtLaunch, FinishesWhatASuddenEndLeft)
{
    test::Program program;
    program.keepStoredValues();
    program.writeBook(program.inLibrary("Sea.epub"));
    program.writeBook(program.inLibrary("Plan.epub"));
    program.defaults.setObject("Removals", Value::Array { program.inLibrary("Sea.epub"), "/gone/Tale.epub" });
    program.workspace.trash = program.home.path("Trash");
    createFolder(program.workspace.trash);
    program.launch();
    EXPECT_EQ(program.titles(), Names { "Plan" });
    EXPECT_EQ(program.workspace.recycled, Names { program.inLibrary("Sea.epub") });
    EXPECT_TRUE(fileExists(program.home.path("Trash/Sea.epub")));
    EXPECT_FALSE(program.defaults.hasKey("Removals"));
    EXPECT_FALSE(program.window.errorWinFake.visible);
}

TEST(RemovalAtLaunch, LeavesTheArchiveOfABookThatIsInTheLibrary)
{
    test::Program program;
    program.keepStoredValues();
    const auto archive = program.writeBook(program.inLibrary("Sea.epub"));
    program.defaults.setObject(
        "BookData", Value::Array { Value::Dictionary { { "Title", "Sea" }, { "ePubPath", archive } } });
    program.defaults.setObject("Removals", Value::Array { archive });
    program.launch();
    EXPECT_EQ(program.titles(), Names { "Sea" });
    EXPECT_TRUE(program.workspace.recycled.empty());
}

}
