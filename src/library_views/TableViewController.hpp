#pragma once

#include "library_views/LibraryViewController.hpp"
#include "library_views/MyTableView.hpp"

namespace pagora {

// The controller of the list of books.
class TableViewController : public LibraryViewController, public MyTableViewTarget {
public:
    TableViewController(LibraryViewHost& host, LibrarySelection& selection)
        : LibraryViewController("TableView", host)
        , _bookTable(host, selection, books(), view())
    {
        _bookTable.set_tableController(*this);
        listenWith(_bookTable);
    }

    ArrayController& bookArray() { return books(); }
    MyTableView& bookTable() { return _bookTable; }
    LibraryBookView& bookView() override { return _bookTable; }

    // Shows the books and selects none of them.
    void putBookList(BookArray array)
    {
        books().setContent(std::move(array));
        _bookTable.setNoBookSelected();
    }
    // Opens the first selected book, if there is one.
    void mouseDoubleClick() override;

private:
    MyTableView _bookTable;
};

}
