#pragma once

#include "catalogue/BookInfo.hpp"

#include <cstddef>
#include <memory>
#include <vector>

namespace pagora {

// Books in catalogue order. One immutable list is shared by all who show it.
using BookArray = std::shared_ptr<const std::vector<BookInfoPtr>>;

// Follows an array controller; the view on screen does. Main thread.
class ArrayObserver {
public:
    virtual ~ArrayObserver() = default;
    virtual void contentDidChange() = 0;
    virtual void selectionDidChange() = 0;
};

// The books that a library view shows and which of them are selected, as indexes in ascending order. Main thread.
class ArrayController {
public:
    // `observer` must outlive the controller's last change; null ends the following.
    void setObserver(ArrayObserver* observer) { _observer = observer; }

    const std::vector<BookInfoPtr>& content() const { return *_content; }
    const BookArray& contentArray() const { return _content; }
    // Replaces the books; the selection is cleared with them.
    void setContent(BookArray content);

    const std::vector<std::size_t>& selectionIndexes() const { return _selection; }
    // Indexes beyond the content are left out.
    void setSelectionIndexes(std::vector<std::size_t> indexes);
    void selectAll();
    std::vector<BookInfoPtr> selectedObjects() const;

private:
    BookArray _content = std::make_shared<const std::vector<BookInfoPtr>>();
    std::vector<std::size_t> _selection;
    ArrayObserver* _observer = nullptr;
};

}
