#pragma once

#include "catalogue/BookInfo.hpp"
#include "fixed/FixedLayoutWindowController.hpp"
#include "reflowable/EpubWindowController.hpp"

#include <cstdint>
#include <memory>

namespace pagora {

// The book that is open, where it came from, and its reader. Main thread only.
struct Reading {
    // A book from outside the library is read from its own file, or from a copy made for this reading.
    enum class Origin { Library, OwnFile, Copy };

    BookInfoPtr currentBook;
    Origin origin = Origin::Library;
    // Position handed to the reader at opening and read back at closing.
    std::uint64_t curStorageIndex = 0;
    float curStorageCap = 0;
    // At most one of them is there.
    std::unique_ptr<EpubWindowController> _epubWindowController;
    std::unique_ptr<FixedLayoutWindowController> _fixedWindowController;

    bool _singleEpub() const { return origin != Origin::Library; }
    bool hasWindow() const { return _epubWindowController || _fixedWindowController; }
    // The reader's window; null if there is none.
    Window* window() const
    {
        if (_epubWindowController)
            return &_epubWindowController->window();
        return _fixedWindowController ? &_fixedWindowController->window() : nullptr;
    }
};

}
