#pragma once

#include "library_views/LibraryViewController.hpp"

namespace pagora {

// The grid of covers.
class ImageViewController : public LibraryViewController {
public:
    ImageViewController(LibraryViewHost& host, LibrarySelection& selection)
        : LibraryViewController("ImageView", host, selection)
    {
    }

    ArrayController& bookController() { return books(); }
    const std::vector<BookInfoPtr>& eBooks() const { return books().content(); }

    // Shows the books, none of them selected.
    void putBookImages(BookArray books);

    // Whether two or more books were selected at the last click or key.
    bool multiSelection() const { return _multiSelection; }
    void setMultiSelection(bool multiSelection) { _multiSelection = multiSelection; }

    void removeBooks() override;
    void userDidSelect() override;
    void userDidClick(int clickCount) override;

private:
    bool _multiSelection = false;
};

}
