#include "reader/gtk/ReaderKeys.hpp"

#include <gdk/gdkkeysyms.h>

#include <gtest/gtest.h>

namespace pagora::test {

namespace {

std::optional<ReaderCommand> commandOf(guint key, PageDirection direction)
{
    return readerCommand(key, Gdk::ModifierType {}, ReaderFocus::Page, direction);
}

}

TEST(ReaderKeys, ArrowsGoTheWayOfThePages)
{
    for (const guint left : { GDK_KEY_Left, GDK_KEY_KP_Left }) {
        EXPECT_EQ(commandOf(left, PageDirection::LeftToRight), ReaderCommand::PreviousPage);
        EXPECT_EQ(commandOf(left, PageDirection::RightToLeft), ReaderCommand::NextPage);
    }
    for (const guint right : { GDK_KEY_Right, GDK_KEY_KP_Right }) {
        EXPECT_EQ(commandOf(right, PageDirection::LeftToRight), ReaderCommand::NextPage);
        EXPECT_EQ(commandOf(right, PageDirection::RightToLeft), ReaderCommand::PreviousPage);
    }
}

TEST(ReaderKeys, KeysWithoutASideAreTheSameBothWays)
{
    for (const auto direction : { PageDirection::LeftToRight, PageDirection::RightToLeft }) {
        EXPECT_EQ(commandOf(GDK_KEY_space, direction), ReaderCommand::NextPage);
        EXPECT_EQ(commandOf(GDK_KEY_Page_Up, direction), ReaderCommand::PreviousPage);
        EXPECT_EQ(commandOf(GDK_KEY_Home, direction), ReaderCommand::FirstPage);
    }
}

}
