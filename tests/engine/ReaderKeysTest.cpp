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

TEST(ReaderKeys, AltWithAnArrowTakesTheWayWhicheverWayThePagesRun)
{
    const auto alt = Gdk::ModifierType::ALT_MASK;
    for (const auto direction : { PageDirection::LeftToRight, PageDirection::RightToLeft }) {
        for (const auto focus : { ReaderFocus::Page, ReaderFocus::Text, ReaderFocus::Control }) {
            EXPECT_EQ(readerCommand(GDK_KEY_Left, alt, focus, direction), ReaderCommand::GoBack);
            EXPECT_EQ(readerCommand(GDK_KEY_Right, alt, focus, direction), ReaderCommand::GoForward);
        }
        EXPECT_EQ(commandOf(GDK_KEY_Back, direction), ReaderCommand::GoBack);
        EXPECT_EQ(commandOf(GDK_KEY_Forward, direction), ReaderCommand::GoForward);
    }
    EXPECT_FALSE(readerCommand(
        GDK_KEY_Left, alt | Gdk::ModifierType::CONTROL_MASK, ReaderFocus::Page, PageDirection::LeftToRight));
}

TEST(ReaderKeys, F3LeadsFromMatchToMatchAlsoFromTheField)
{
    for (const auto focus : { ReaderFocus::Page, ReaderFocus::Text, ReaderFocus::Contents }) {
        EXPECT_EQ(readerCommand(GDK_KEY_F3, {}, focus, PageDirection::LeftToRight), ReaderCommand::NextResult);
        EXPECT_EQ(readerCommand(GDK_KEY_F3, Gdk::ModifierType::SHIFT_MASK, focus, PageDirection::LeftToRight),
            ReaderCommand::PreviousResult);
    }
}

}
