#pragma once

#include "catalogue/BookInfo.hpp"
#include "kept_pages/KeptPages.hpp"
#include "reflowable/EpubController.hpp"
#include "running/RunLoop.hpp"

namespace pagora {

// Keeps a picture of the last page read in each book of the library. The picture is stored when the book is closed. It
// is shown when the book is opened again, until the page itself has been drawn. Main thread only.
class LeftPage {
public:
    explicit LeftPage(KeptPages& pages)
        : _pages(pages)
    {
    }

    // Shows the stored picture of the reader's page, if there is one. Called when the reader has the book's settings
    // and place, and before the book is started.
    void show(const BookInfo& book, const EpubController& reader, WebView& webView) const;
    // Stores the picture of the shown page, in the background. Called after the place has been stored in `book`.
    void keep(const BookInfo& book, const EpubController& reader, WebView& webView, RunLoop& runLoop) const;

private:
    KeptPages& _pages;
};

}
