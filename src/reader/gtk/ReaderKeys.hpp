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
    GoForward,
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

// The kind of the focused control, which determines the keys that it uses itself.
enum class ReaderFocus {
    // The page, or no control.
    Page,
    // A button, which uses Space and Return.
    Button,
    // The contents, which use the keys for up and down.
    Contents,
    // A control that uses the arrow keys.
    Control,
    // A text field.
    Text,
};

// The direction in which pages follow one another.
enum class PageDirection { LeftToRight, RightToLeft };

// Returns the command of a key with these modifiers for that focus; nullopt if the focused control gets the key.
std::optional<ReaderCommand> readerCommand(
    guint keyval, Gdk::ModifierType state, ReaderFocus focus, PageDirection direction);

}
