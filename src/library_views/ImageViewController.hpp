#pragma once

#include "library_views/LibraryViewController.hpp"
#include "library_views/MyCollectionView.hpp"

namespace pagora {

// The controller of the grid of covers.
class ImageViewController : public LibraryViewController {
public:
    ImageViewController(LibraryViewHost& host, LibrarySelection& selection)
        : LibraryViewController("ImageView", host)
        , _bookCollectionView(host, selection, books(), view())
    {
        listenWith(_bookCollectionView);
    }

    ArrayController& bookController() { return books(); }
    const std::vector<BookInfoPtr>& eBooks() const { return books().content(); }
    MyCollectionView& bookCollectionView() { return _bookCollectionView; }
    LibraryBookView& bookView() override { return _bookCollectionView; }

    // Shows the books and selects none of them.
    void putBookImages(BookArray array)
    {
        books().setContent(std::move(array));
        _bookCollectionView.setMultiSelection(false);
        _bookCollectionView.setNoBookSelected();
    }

private:
    MyCollectionView _bookCollectionView;
};

}
