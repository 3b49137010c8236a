#pragma once

#include "library_views/LibraryBookView.hpp"

namespace pagora {

// The target of the list's double action.
class MyTableViewTarget {
public:
    virtual ~MyTableViewTarget() = default;
    virtual void mouseDoubleClick() = 0;
};

// Handles the user's input on the list of books. `multiSelection` is true if Control was held at the last press of the
// left button. Main thread only.
class MyTableView : public LibraryBookView {
public:
    using LibraryBookView::LibraryBookView;
    void set_tableController(MyTableViewTarget& controller) { _tableController = &controller; }

    void userDidSelect() override;
    // Without Control, a click starts a new selection.
    void userWillClick() override;
    void mouseDown(int clickCount) override;
    // Selects only this item if it is not selected; otherwise the selection stays.
    void rightMouseUp(std::optional<std::size_t> item) override;
    void removeBooks() override;
    void setToolbarReadButton() override;

private:
    MyTableViewTarget* _tableController = nullptr;
};

}
