#pragma once

#include <gdkmm/enums.h>
#include <glib.h>

#include <optional>

namespace pagora {

// Commands of keys in a reader window.
enum class ReaderCommand {
    PreviousPage,
    NextPage,
    FirstPage,
    LastPage,
    Close,
    ToggleContents,
    ToggleFullScreen,
    LeaveFullScreen,
    CallBars,
    Search,
    NextResult,
    PreviousResult,
    GoBack,
    GoOn,
    GoTo,
    ShowSelection,
    LargerText,
    SmallerText,
    DefaultText,
    ToggleBookmark,
    Highlight,
    Annotate,
    ShowMarks,
};

// What has the focus and needs keys for itself.
enum class ReaderFocus {
    // The page, or nothing.
    Page,
    // A button, which Space and Return press.
    Button,
    // The contents, in which the keys for up and down move.
    Contents,
    // A control that the arrows change.
    Control,
    // A field that takes text.
    Text,
};

// Which way the pages follow one another.
enum class PageDirection { LeftToRight, RightToLeft };

// The command of a key with these modifiers while the focus is there; missing when the key goes to the focus.
std::optional<ReaderCommand> readerCommand(
    guint keyval, Gdk::ModifierType state, ReaderFocus focus, PageDirection direction);

}
