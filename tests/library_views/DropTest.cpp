#include "library_views/LibraryViews.hpp"
#include "tests/support/FakeLibraryHub.hpp"
#include "tests/support/FakeLibraryWindow.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using Names = std::vector<std::string>;

constexpr auto any = DragOperation::Copy | DragOperation::Move | DragOperation::Link | DragOperation::Generic;

// Files dragged over the grid or the list, which behave alike.
class Drop : public testing::TestWithParam<const char*> {
protected:
    Drop()
    {
        views.showFirstView();
        if (std::string("List") == GetParam())
            views.takeTableView();
    }
    DropDelegate& target() { return *host.shown->dropDelegate; }
    DragOperation::Mask validate(std::optional<Names> names, DragOperation::Mask operations = any)
    {
        return target().validateDrop({ std::move(names), operations });
    }

    test::FakeLibraryViewHost host;
    test::FakeLibraryHub hub;
    LibraryViews views { host, hub, [] { return std::make_shared<const std::vector<BookInfoPtr>>(); } };
};

INSTANTIATE_TEST_SUITE_P(
    OnThe, Drop, testing::Values("Grid", "List"), [](const auto& info) { return std::string(info.param); });

}

TEST_P(Drop, OfABookIsTheGenericOperation)
{
    EXPECT_EQ(validate(Names { "/a/Sea.epub" }), DragOperation::Generic);
}

TEST_P(Drop, OfABookAmongOtherFilesIsAcceptedAndAllOfThemAreHandedOverInOrder)
{
    const Names names { "/a/notes.txt", "/a/Sea.epub", "/a/Plan.pdf" };
    EXPECT_EQ(validate(names), DragOperation::Generic);
    EXPECT_TRUE(target().acceptDrop({ names, any }));
    EXPECT_EQ(hub.drops, (std::vector<Names> { names }));
}

TEST_P(Drop, OfFilesWithTheExtensionInCapitalsIsRefused)
{
    EXPECT_EQ(validate(Names { "/a/Sea.EPUB", "/a/Plan.Epub" }), DragOperation::None);
}

TEST_P(Drop, OfOtherFilesIsRefused)
{
    EXPECT_EQ(validate(Names { "/a/epub", "/a/Sea.epub.zip", "/a/folder" }), DragOperation::None);
    EXPECT_EQ(validate(Names {}), DragOperation::None);
}

TEST_P(Drop, FromASourceThatOnlyAllowsCopyingIsRefused)
{
    EXPECT_EQ(validate(Names { "/a/Sea.epub" }, DragOperation::Copy), DragOperation::None);
}

TEST_P(Drop, WithoutFileNamesIsJudgedByTheSourceAlone)
{
    EXPECT_EQ(validate(std::nullopt), DragOperation::Generic);
    EXPECT_EQ(validate(std::nullopt, DragOperation::Copy), DragOperation::None);
}

TEST_P(Drop, WithoutFileNamesSucceedsAndImportsNothing)
{
    EXPECT_TRUE(target().prepareForDragOperation());
    EXPECT_TRUE(target().acceptDrop({ std::nullopt, any }));
    EXPECT_TRUE(hub.drops.empty());
}

TEST_P(Drop, HeldOverAnInactiveProgramBringsItForward)
{
    host.active = false;
    validate(Names { "/a/notes.txt" });
    EXPECT_TRUE(host.active);
}

TEST_P(Drop, HeldOverTheActiveProgramLeavesItAsItIs)
{
    test::Journal journal;
    host.journal = &journal;
    validate(Names { "/a/Sea.epub" });
    EXPECT_TRUE(journal.empty());
}

TEST_P(Drop, ThatIsRefusedSaysWhy)
{
    EXPECT_EQ(
        target().whyRefused({ Names { "/a/Sea.EPUB" }, any }), "Only files that end in “.epub” can be dropped here");
    EXPECT_EQ(target().whyRefused({ Names { "/a/Sea.epub" }, DragOperation::Copy }),
        "The program that these files come from does not let them be dropped here");
}

}
