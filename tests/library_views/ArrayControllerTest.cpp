#include "library_views/ArrayController.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

BookArray books(std::size_t count)
{
    std::vector<BookInfoPtr> list;
    for (std::size_t i = 0; i < count; ++i)
        list.push_back(std::make_shared<BookInfo>());
    return std::make_shared<const std::vector<BookInfoPtr>>(std::move(list));
}

struct CountingObserver : ArrayObserver {
    void contentDidChange() override { ++contentChanges; }
    void selectionDidChange() override { ++selectionChanges; }
    int contentChanges = 0;
    int selectionChanges = 0;
};

}

TEST(ArrayController, StartsEmpty)
{
    const ArrayController controller;
    EXPECT_TRUE(controller.content().empty());
    EXPECT_TRUE(controller.selectionIndexes().empty());
}

TEST(ArrayController, NewContentClearsTheSelection)
{
    ArrayController controller;
    controller.setContent(books(3));
    controller.setSelectionIndexes({ 1 });
    controller.setContent(books(3));
    EXPECT_TRUE(controller.selectionIndexes().empty());
}

TEST(ArrayController, SelectedIndexesAreKeptInAscendingOrder)
{
    ArrayController controller;
    controller.setContent(books(4));
    controller.setSelectionIndexes({ 3, 0, 2 });
    EXPECT_EQ(controller.selectionIndexes(), (std::vector<std::size_t> { 0, 2, 3 }));
}

TEST(ArrayController, IndexesBeyondTheContentAreLeftOut)
{
    ArrayController controller;
    controller.setContent(books(2));
    controller.setSelectionIndexes({ 1, 2 });
    EXPECT_EQ(controller.selectionIndexes(), (std::vector<std::size_t> { 1 }));
}

TEST(ArrayController, SelectedObjectsFollowTheIndexes)
{
    ArrayController controller;
    const auto three = books(3);
    controller.setContent(three);
    controller.setSelectionIndexes({ 2, 0 });
    EXPECT_EQ(controller.selectedObjects(), (std::vector<BookInfoPtr> { (*three)[0], (*three)[2] }));
}

TEST(ArrayController, AllCanBeSelected)
{
    ArrayController controller;
    controller.setContent(books(3));
    controller.selectAll();
    EXPECT_EQ(controller.selectedObjects().size(), 3u);
}

TEST(ArrayController, TheObserverHearsOfNewContent)
{
    ArrayController controller;
    CountingObserver observer;
    controller.setObserver(&observer);
    controller.setContent(books(1));
    EXPECT_EQ(observer.contentChanges, 1);
    EXPECT_EQ(observer.selectionChanges, 1);
}

TEST(ArrayController, TheObserverHearsOfEachNewSelectionOnce)
{
    ArrayController controller;
    controller.setContent(books(2));
    CountingObserver observer;
    controller.setObserver(&observer);
    controller.setSelectionIndexes({ 1 });
    controller.setSelectionIndexes({ 1 });
    EXPECT_EQ(observer.selectionChanges, 1);
}

}
