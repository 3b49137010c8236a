#include "app/LeftPage.hpp"

#include <utility>

namespace pagora {

namespace {

std::optional<PageKey> keyOf(const BookInfo& book, const EpubController& reader)
{
    auto key = book.epubPath() ? pageKeyOf(*book.epubPath()) : std::nullopt;
    if (!key)
        return std::nullopt;
    key->theme = reader.currentColorOption();
    key->font = reader.currentFont().value_or("");
    key->textSize = reader.currentFontSize();
    key->columns = reader.numberOfColumns();
    key->chapter = book.lastIndex();
    key->cap = book.lastCap();
    key->place = book.lastPlace();
    return key;
}

}

void LeftPage::show(const BookInfo& book, const EpubController& reader, WebView& webView) const
{
    const auto key = keyOf(book, reader);
    const auto picture = key ? _pages.read(*key) : std::nullopt;
    if (picture)
        webView.showUntilDrawn(*picture);
}

void LeftPage::keep(const BookInfo& book, const EpubController& reader, WebView& webView, RunLoop& runLoop) const
{
    auto key = keyOf(book, reader);
    auto picture = key ? webView.pictureAtRest() : std::nullopt;
    if (picture)
        runLoop.performInBackground(_pages.storing(std::move(*key), std::move(*picture)));
}

}
