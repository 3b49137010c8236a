#pragma once

#include "catalogue/BookInfo.hpp"
#include "kept_pages/KeptPages.hpp"
#include "reflowable/EpubController.hpp"
#include "running/RunLoop.hpp"

namespace pagora {

// The page on which a book of the library was left: its picture is kept when the book is closed, and shown in place of
// the same page while that is loaded. Main thread.
class LeftPage {
public:
    explicit LeftPage(KeptPages& pages)
        : _pages(pages)
    {
    }

    // The reader has the book's settings and its place. Before the book is started.
    void show(const BookInfo& book, const EpubController& reader, WebView& webView) const;
    // The book's record has the place. The picture is written in the background.
    void keep(const BookInfo& book, const EpubController& reader, WebView& webView, RunLoop& runLoop) const;

private:
    KeptPages& _pages;
};

}
