#pragma once

#include "library_views/LibraryBookView.hpp"

namespace pagora {

// Handles the user's input on the grid of covers. `multiSelection` is true if two or more books were selected at the
// last click or key. Main thread only.
class MyCollectionView : public LibraryBookView {
public:
    using LibraryBookView::LibraryBookView;

    void userDidSelect() override;
    void userWillClick() override { }
    void mouseDown(int clickCount) override;
    // Selects only this item, unless several books are selected: then the selection stays, also for an item outside it.
    void rightMouseUp(std::optional<std::size_t> item) override;
    void removeBooks() override;
    void setToolbarReadButton() override;
};

}
