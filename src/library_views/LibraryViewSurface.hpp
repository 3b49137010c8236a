#pragma once

#include "library_views/ArrayController.hpp"
#include "platform/Controls.hpp"

#include <functional>
#include <memory>
#include <string>

namespace pagora {

// What a library view does on screen. It shows an array controller's books, follows its selection and changes it as the
// user selects. Main thread.
class LibraryViewSurface {
public:
    virtual ~LibraryViewSurface() = default;

    // Gives it the keyboard focus.
    virtual void makeFirstResponder() = 0;

    // Called after the user changed the selection, and after each click on the view or key that opens (Return counts as
    // a double click), when the selection has followed it.
    struct Handler {
        virtual ~Handler() = default;
        virtual void userDidSelect() = 0;
        virtual void userDidClick(int clickCount) = 0;
    };
    virtual void setHandler(Handler* handler) = 0;
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

    virtual Button& readerButton() = 0;
    virtual SegmentedControl& bListControl() = 0;
};

}
