#pragma once

#include "catalogue/BookInfo.hpp"
#include "fixed/FixedLayoutWindowController.hpp"
#include "reflowable/EpubWindowController.hpp"

#include <cstdint>
#include <memory>

namespace pagora {

// The book that is open, where it came from, and its reader. Main thread only.
struct Reading {
    // The origin of the open book. A book that is not in the library is read from its own file, or from a temporary
    // copy.
    enum class Origin { Library, OwnFile, Copy };

    BookInfoPtr currentBook;
    Origin origin = Origin::Library;
    // Position that is passed to the reader when the book is opened, and read back when it is closed.
    std::uint64_t curStorageIndex = 0;
    float curStorageCap = 0;
    // At most one of the two is set.
    std::unique_ptr<EpubWindowController> _epubWindowController;
    std::unique_ptr<FixedLayoutWindowController> _fixedWindowController;

    bool _singleEpub() const { return origin != Origin::Library; }
    bool hasWindow() const { return _epubWindowController || _fixedWindowController; }
    // Returns the reader's window; null if there is none.
    Window* window() const
    {
        if (_epubWindowController)
            return &_epubWindowController->window();
        return _fixedWindowController ? &_fixedWindowController->window() : nullptr;
    }
};

}
