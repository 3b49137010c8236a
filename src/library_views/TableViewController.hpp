#pragma once

#include "library_views/LibraryViewController.hpp"

namespace pagora {

// The list of books.
class TableViewController : public LibraryViewController {
public:
    TableViewController(LibraryViewHost& host, LibrarySelection& selection)
        : LibraryViewController("TableView", host, selection)
    {
    }

    ArrayController& bookArray() { return books(); }

    // Shows the books, none of them selected.
    void putBookList(BookArray books);
    // Opens the first selected book, if there is one.
    void mouseDoubleClick();

    // Whether the Control key was held at the last press of the left button.
    bool multiSelection() const { return _multiSelection; }
    void setMultiSelection(bool multiSelection) { _multiSelection = multiSelection; }

    void removeBooks() override;
    void userDidSelect() override;
    void userDidClick(int clickCount) override;

private:
    bool _multiSelection = false;
};

}
