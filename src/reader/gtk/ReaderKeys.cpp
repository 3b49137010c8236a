#include "reader/gtk/ReaderKeys.hpp"

#include <gdk/gdkkeysyms.h>

namespace pagora {

namespace {

std::optional<ReaderCommand> controlCommand(guint keyval)
{
    switch (keyval) {
    case GDK_KEY_w:
    case GDK_KEY_W:
        return ReaderCommand::Close;
    case GDK_KEY_f:
    case GDK_KEY_F:
        return ReaderCommand::Search;
    case GDK_KEY_g:
    case GDK_KEY_G:
        return ReaderCommand::GoTo;
    case GDK_KEY_d:
    case GDK_KEY_D:
        return ReaderCommand::ToggleBookmark;
    case GDK_KEY_h:
    case GDK_KEY_H:
        return ReaderCommand::Highlight;
    case GDK_KEY_m:
    case GDK_KEY_M:
        return ReaderCommand::Annotate;
    case GDK_KEY_l:
    case GDK_KEY_L:
        return ReaderCommand::ShowMarks;
    case GDK_KEY_plus:
    case GDK_KEY_equal:
    case GDK_KEY_KP_Add:
        return ReaderCommand::LargerText;
    case GDK_KEY_minus:
    case GDK_KEY_underscore:
    case GDK_KEY_KP_Subtract:
        return ReaderCommand::SmallerText;
    case GDK_KEY_0:
    case GDK_KEY_KP_0:
    case GDK_KEY_KP_Insert:
        return ReaderCommand::DefaultText;
    default:
        return {};
    }
}

// Commands for going back and forward: keys with Alt, and the dedicated keys of keyboards and mice.
std::optional<ReaderCommand> historyCommand(guint keyval, bool holdsAlt)
{
    const bool isBack = keyval == GDK_KEY_Left || keyval == GDK_KEY_KP_Left;
    const bool isOn = keyval == GDK_KEY_Right || keyval == GDK_KEY_KP_Right;
    if (keyval == GDK_KEY_Back || (holdsAlt && isBack))
        return ReaderCommand::GoBack;
    if (keyval == GDK_KEY_Forward || (holdsAlt && isOn))
        return ReaderCommand::GoForward;
    return {};
}

// Commands of keys that turn pages, unless the focused control uses them.
std::optional<ReaderCommand> pageCommand(guint keyval, bool shift, ReaderFocus focus, PageDirection direction)
{
    const bool rightToLeft = direction == PageDirection::RightToLeft;
    switch (keyval) {
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
        return rightToLeft ? ReaderCommand::NextPage : ReaderCommand::PreviousPage;
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
        return rightToLeft ? ReaderCommand::PreviousPage : ReaderCommand::NextPage;
    case GDK_KEY_space:
    case GDK_KEY_KP_Space:
        if (focus != ReaderFocus::Page)
            return {};
        return shift ? ReaderCommand::PreviousPage : ReaderCommand::NextPage;
    default:
        break;
    }
    if (focus == ReaderFocus::Contents)
        return {};
    switch (keyval) {
    case GDK_KEY_Page_Up:
    case GDK_KEY_KP_Page_Up:
        return ReaderCommand::PreviousPage;
    case GDK_KEY_Page_Down:
    case GDK_KEY_KP_Page_Down:
        return ReaderCommand::NextPage;
    case GDK_KEY_Home:
    case GDK_KEY_KP_Home:
        return ReaderCommand::FirstPage;
    case GDK_KEY_End:
    case GDK_KEY_KP_End:
        return ReaderCommand::LastPage;
    default:
        return {};
    }
}

}

std::optional<ReaderCommand> readerCommand(
    guint keyval, Gdk::ModifierType state, ReaderFocus focus, PageDirection direction)
{
    const auto holds = [state](Gdk::ModifierType modifier) { return (state & modifier) == modifier; };
    if (!holds(Gdk::ModifierType::CONTROL_MASK) && !holds(Gdk::ModifierType::SHIFT_MASK)) {
        if (const auto command = historyCommand(keyval, holds(Gdk::ModifierType::ALT_MASK)))
            return command;
    }
    if (holds(Gdk::ModifierType::ALT_MASK) || holds(Gdk::ModifierType::SUPER_MASK))
        return {};
    if (holds(Gdk::ModifierType::CONTROL_MASK))
        return controlCommand(keyval);
    const bool shift = holds(Gdk::ModifierType::SHIFT_MASK);
    if (keyval == GDK_KEY_F3)
        return shift ? ReaderCommand::PreviousResult : ReaderCommand::NextResult;
    if (!shift && keyval == GDK_KEY_F9)
        return ReaderCommand::ToggleContents;
    if (!shift && keyval == GDK_KEY_F11)
        return ReaderCommand::ToggleFullScreen;
    if (!shift && keyval == GDK_KEY_F10)
        return ReaderCommand::CallBars;
    if (!shift && keyval == GDK_KEY_Escape)
        return ReaderCommand::LeaveFullScreen;
    if (focus == ReaderFocus::Text || focus == ReaderFocus::Control)
        return {};
    const bool asksForMenu = shift ? keyval == GDK_KEY_F10 : keyval == GDK_KEY_Menu;
    if (asksForMenu && focus == ReaderFocus::Page)
        return ReaderCommand::ShowSelection;
    if (shift && keyval != GDK_KEY_space && keyval != GDK_KEY_KP_Space)
        return {};
    return pageCommand(keyval, shift, focus, direction);
}

}
