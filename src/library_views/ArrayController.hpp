#pragma once

#include "catalogue/BookInfo.hpp"

#include <cstddef>
#include <memory>
#include <vector>

namespace pagora {

// Books in catalogue order. All views share one immutable list.
using BookArray = std::shared_ptr<const std::vector<BookInfoPtr>>;

// Observes an array controller. Implemented by the view on screen. Main thread only.
class ArrayObserver {
public:
    virtual ~ArrayObserver() = default;
    virtual void contentDidChange() = 0;
    virtual void selectionDidChange() = 0;
};

// The books that a library view shows and which of them are selected, as indexes in ascending order. Main thread only.
class ArrayController {
public:
    // `observer` must outlive the controller's last change; null removes the observer.
    void setObserver(ArrayObserver* observer) { _observer = observer; }

    const std::vector<BookInfoPtr>& content() const { return *_content; }
    const BookArray& contentArray() const { return _content; }
    // Replaces the books and clears the selection.
    void setContent(BookArray content);

    const std::vector<std::size_t>& selectionIndexes() const { return _selection; }
    // Ignores indexes beyond the content.
    void setSelectionIndexes(std::vector<std::size_t> indexes);
    void selectAll();
    std::vector<BookInfoPtr> selectedObjects() const;

private:
    BookArray _content = std::make_shared<const std::vector<BookInfoPtr>>();
    std::vector<std::size_t> _selection;
    ArrayObserver* _observer = nullptr;
};

}
