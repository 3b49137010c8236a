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

// What a library view does on screen. It shows an array controller's books, follows its selection and changes it as the
// user selects. Main thread.
class LibraryViewSurface {
public:
    virtual ~LibraryViewSurface() = default;

    // Gives it the keyboard focus.
    virtual void makeFirstResponder() = 0;
    // Shows the menu where the right button was last released, or at the focused item for a key that opens menus.
    virtual void popUpContextMenu(const BookMenu& menu) = 0;

    struct Handler {
        virtual ~Handler() = default;
        // The user changed the selection.
        virtual void userDidSelect() = 0;
        // A click of the left button on an item is about to change the selection.
        virtual void userWillClick() = 0;
        // After each click on the view, and each key that opens (Return counts as a double click), when the selection
        // has followed it.
        virtual void mouseDown(int clickCount) = 0;
        // The right button was released over the item, or a key asked for its menu; none for the empty part.
        virtual void rightMouseUp(std::optional<std::size_t> item) = 0;
    };
    virtual void setHandler(Handler* handler) = 0;
    // Registers the view for dropped file names.
    virtual void setDropDelegate(DropDelegate* delegate) = 0;
};

// The library window as the views see it: the place where one of them is shown, and the controls that follow them.
class LibraryViewHost {
public:
    virtual ~LibraryViewHost() = default;

    // Builds the view of the layout "ImageView" (a grid of covers) or "TableView" (a list) over `books`. It is not
    // shown yet.
    virtual std::unique_ptr<LibraryViewSurface> loadView(const char* layout, ArrayController& books) = 0;
    // Puts the view into the window's content view, in full size, in place of what was there.
    virtual void setContentView(LibraryViewSurface& view) = 0;
    // Takes it out of the window; before the view goes.
    virtual void removeContentView(LibraryViewSurface& view) = 0;

    // An alert with an informative text and two buttons. `answered` receives 1000 for the first button, and for an
    // alert that is put away, and 1001 for the second.
    virtual void runAlert(const std::string& informativeText, const std::string& firstButton,
        const std::string& secondButton, std::function<void(int code)> answered)
        = 0;

    // Shows every book again: what is searched for is forgotten.
    virtual void endSearch() = 0;

    // Whether one of the program's windows has the keyboard.
    virtual bool isActive() const = 0;
    // Brings the program to the front.
    virtual void activateIgnoringOtherApps() = 0;

    virtual Button& readerButton() = 0;
    virtual SegmentedControl& bListControl() = 0;
};

}
