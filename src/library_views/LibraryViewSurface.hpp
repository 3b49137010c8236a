#pragma once

#include "controls/Controls.hpp"
#include "library_views/ArrayController.hpp"
#include "library_views/BookMenu.hpp"
#include "library_views/DraggingInfo.hpp"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pagora {

// The widget of a library view. Shows the books of an array controller and keeps both selections equal. Main thread
// only.
class LibraryViewSurface {
public:
    virtual ~LibraryViewSurface() = default;

    // Moves the keyboard focus to the view.
    virtual void makeFirstResponder() = 0;
    // Shows the menu where the right button was last released, or at the focused item for a key that opens menus.
    virtual void popUpContextMenu(const BookMenu& menu) = 0;

    struct Handler {
        virtual ~Handler() = default;
        // Called when the user has changed the selection.
        virtual void userDidSelect() = 0;
        // Called before a click of the left button on an item changes the selection.
        virtual void userWillClick() = 0;
        // Called after each click on the view and each key that opens a book (Return is treated as a double click),
        // when the selection is up to date.
        virtual void mouseDown(int clickCount) = 0;
        // Called when the context menu of an item was requested; nullopt for the empty part of the view.
        virtual void rightMouseUp(std::optional<std::size_t> item) = 0;
    };
    virtual void setHandler(Handler* handler) = 0;
    // Registers the view for dropped file names.
    virtual void setDropDelegate(DropDelegate* delegate) = 0;
};

// The parts of the library window that the views use: their container and the controls that depend on them. Main thread
// only.
class LibraryViewHost {
public:
    virtual ~LibraryViewHost() = default;

    // Creates the view of the layout "ImageView" (a grid of covers) or "TableView" (a list) over `books`. It is not
    // shown yet.
    virtual std::unique_ptr<LibraryViewSurface> loadView(const char* layout, ArrayController& books) = 0;
    // Replaces the content of the window's content view by this view, in full size.
    virtual void setContentView(LibraryViewSurface& view) = 0;
    // Removes the view from the window. Called before the view is destroyed.
    virtual void removeContentView(LibraryViewSurface& view) = 0;

    // Shows an alert with an informative text and two buttons. `answered` receives 1000 for the first button or when
    // the alert is closed, and 1001 for the second.
    virtual void runAlert(const std::string& informativeText, const std::string& firstButton,
        const std::string& secondButton, std::function<void(int code)> answered)
        = 0;

    // Ends the search, so that all books are shown.
    virtual void endSearch() = 0;

    // Returns whether one of the program's windows has the keyboard focus.
    virtual bool isActive() const = 0;
    // Brings the program to the front.
    virtual void activateIgnoringOtherApps() = 0;

    virtual Button& readerButton() = 0;
    virtual SegmentedControl& bListControl() = 0;
};

}
