#include "base/Resource.hpp"
#include "covers/gtk/CellText.hpp"
#include "covers/gtk/DrawnCover.hpp"
#include "tests/engine/LibraryViewTest.hpp"

#include <gdkmm/pixbuf.h>

#include <array>
#include <cmath>
#include <cstdlib>

namespace pagora::test {

namespace {

Data defaultCoverData()
{
    return Data(resourceBytes("/org/pagora/Pagora/pagora_default_cover.jpg").value_or(""));
}

Data whiteCoverData()
{
    const std::shared_ptr<GdkPixbuf> pixels(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, 106, 156), &g_object_unref);
    gdk_pixbuf_fill(pixels.get(), 0xFFFFFFFF);
    return Data(*Image(pixels, { 106, 156 }).jpegData(0.8));
}

// Returns the colour of a cell's cover at a position, from 0 to 1 of its width and height.
std::array<int, 3> pixelIn(const BookCell& cell, double x, double y)
{
    const auto& cover = cell.cover().cover();
    const auto width = static_cast<std::size_t>(cover->get_width());
    std::vector<guchar> pixels(width * static_cast<std::size_t>(cover->get_height()) * 4);
    gdk_texture_download(cover->gobj(), pixels.data(), width * 4);
    const auto at = (static_cast<std::size_t>(y * cover->get_height()) * width
                        + static_cast<std::size_t>(x * static_cast<double>(width)))
        * 4;
    return { pixels[at + 2], pixels[at + 1], pixels[at] };
}

// Returns whether the cell shows a drawn cover with these texts.
bool isDrawn(const BookCell& cell, const std::string& title, const std::string& author)
{
    const auto board = boardColor(title, author);
    // The middle of the edge has no gradient and no text.
    const auto seen = pixelIn(cell, 0.97, 0.5);
    for (std::size_t part = 0; part < 3; ++part) {
        if (std::abs(seen[part] - static_cast<int>(board[part] * 255)) > 4)
            return false;
    }
    return true;
}

// Relative luminance as defined by WCAG.
double luminance(const std::array<double, 3>& color)
{
    constexpr std::array weights { 0.2126, 0.7152, 0.0722 };
    double sum = 0;
    for (std::size_t part = 0; part < 3; ++part) {
        const double value = color[part];
        sum += weights[part] * (value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
    }
    return sum;
}

double contrast(const std::array<double, 3>& dark, const std::array<double, 3>& light)
{
    return (luminance(light) + 0.05) / (luminance(dark) + 0.05);
}

using BookCells = LibraryView<GridSurface>;

}

TEST_F(BookCells, BookWithoutFieldsShowsADrawnCoverAndNoText)
{
    _books.setContent(std::make_shared<std::vector<BookInfoPtr>>(1, std::make_shared<BookInfo>()));
    const auto* const cell = firstCellWithCover();
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->title(), "");
    EXPECT_EQ(cell->author(), "");
    EXPECT_TRUE(isDrawn(*cell, "", ""));
}

TEST_F(BookCells, CellsHaveOneSizeWhateverTheirTexts)
{
    const auto books = makeBooks(3);
    books->at(0)->setTitle("");
    books->at(1)->setTitle(std::string(200, 'w'));
    books->at(1)->setAuthor(std::string(200, 'w'));
    _books.setContent(books);
    ASSERT_TRUE(waitUntil([&] {
        const auto cells = cellsOf(_surface.widget());
        return cells.size() >= 3 && cells[2]->get_height() > 0;
    }));
    const auto cells = cellsOf(_surface.widget());
    for (const auto* cell : { cells[0], cells[1] }) {
        EXPECT_EQ(cell->get_width(), cells[2]->get_width());
        EXPECT_EQ(cell->get_height(), cells[2]->get_height());
    }
    EXPECT_GE(cells[0]->get_height(), static_cast<int>(CoverLoader::coverSize.height) + 40);
}

TEST_F(BookCells, CoverAppearsWhenItIsDecoded)
{
    const auto books = makeBooks(1);
    books->front()->setImgData(whiteCoverData());
    _books.setContent(books);
    const auto* const cell = firstCellWithCover();
    ASSERT_TRUE(cell);
    EXPECT_EQ(pixelIn(*cell, 0.5, 0.9), (std::array<int, 3> { 255, 255, 255 }));
    EXPECT_EQ(_loader.cache().size(), 1U);
}

TEST_F(BookCells, CoverThatDoesNotDecodeIsDrawn)
{
    const auto books = makeBooks(1);
    books->front()->setImgData(Data("no picture"));
    _books.setContent(books);
    const auto* const cell = firstCellWithCover();
    ASSERT_TRUE(cell);
    EXPECT_TRUE(isDrawn(*cell, "Title 0", "Author 0"));
}

TEST_F(BookCells, StoredDefaultCoverStandsForNoneAlsoInAnotherEncoding)
{
    const auto encodedAgain = Image::fromBytes(defaultCoverData().bytes())->jpegData(0.8);
    for (const auto& data : { defaultCoverData(), Data(*encodedAgain) }) {
        const auto books = makeBooks(1);
        books->front()->setImgData(data);
        _books.setContent(books);
        const auto* const cell = firstCellWithCover();
        ASSERT_TRUE(cell);
        EXPECT_TRUE(isDrawn(*cell, "Title 0", "Author 0"));
    }
}

TEST_F(BookCells, BooksOfTheSameTitleByOthersHaveAnotherBoard)
{
    EXPECT_EQ(boardColor("Poems", "Keats"), boardColor("Poems", "Keats"));
    EXPECT_NE(boardColor("Poems", "Keats"), boardColor("Poems", "Shelley"));
    EXPECT_NE(boardColor("Poems", "Keats"), boardColor("Letters", "Keats"));
}

TEST_F(BookCells, LettersAreReadOnEveryBoard)
{
    for (int i = 0; i < 2'000; ++i) {
        const auto color = boardColor("Title " + std::to_string(i), "Author");
        EXPECT_GE(contrast(color, boardLetters), 4.5) << i;
    }
}

TEST_F(BookCells, TextsOfAnyKindAreDrawn)
{
    const std::string longWord(5'000, 'w');
    for (const auto* const title : { "", "\xFF\xFE", "قصة", "e\u0301\u0301\u0301\u0301", longWord.c_str() })
        EXPECT_EQ(
            drawnCover(cellText(title).raw(), cellText(title).raw(), { 106, 156 }, 2).size(), (Size { 212, 312 }));
}

TEST_F(BookCells, ALineTellsHowFarABookWasRead)
{
    const auto books = makeBooks(2);
    books->front()->setFilePaths(Value::Array { "/a", "/b" });
    books->front()->setLastIndex(1);
    _books.setContent(books);
    ASSERT_TRUE(waitUntil([&] { return cellsOf(_surface.widget()).size() >= 2; }));
    const auto cells = cellsOf(_surface.widget());
    EXPECT_EQ(cells[0]->cover().progress(), 0.5);
    EXPECT_EQ(cells[1]->cover().progress(), std::nullopt);
    EXPECT_EQ(spokenBook(*books->front()), "Title 0, Author 0, 50 % read");
}

TEST_F(BookCells, TheLineFollowsTheReadingWhenTheLibraryComesBack)
{
    const auto books = makeBooks(1);
    books->front()->setFilePaths(Value::Array { "/a", "/b" });
    _books.setContent(books);
    ASSERT_TRUE(waitUntil([&] { return !cellsOf(_surface.widget()).empty(); }));
    _window.set_visible(false);
    books->front()->setLastIndex(1);
    _window.set_visible(true);
    const auto* const cell = cellsOf(_surface.widget()).front();
    EXPECT_TRUE(waitUntil([&] { return cell->cover().progress() == 0.5; }));
}

TEST_F(BookCells, TextsThatSayLittleAreDimmed)
{
    const auto books = makeBooks(1);
    books->front()->setAuthor("<unknown>");
    _books.setContent(books);
    ASSERT_TRUE(waitUntil([&] { return !cellsOf(_surface.widget()).empty(); }));
    auto* const title = cellsOf(_surface.widget()).front()->get_first_child()->get_next_sibling();
    EXPECT_FALSE(title->has_css_class("says-little"));
    EXPECT_TRUE(title->get_next_sibling()->has_css_class("says-little"));
}

TEST_F(BookCells, TitleOnSeveralLinesIsShownAsOne)
{
    EXPECT_EQ(cellText("One\nTwo"), "One Two");
}

TEST(CoverCache, KeepsTheCoversUsedLast)
{
    CoverCache cache(2);
    std::vector<BookInfo> books(3);
    const auto texture = Gdk::Texture::create_for_pixbuf(Gdk::Pixbuf::create(Gdk::Colorspace::RGB, false, 8, 1, 1));
    for (auto& book : books)
        book.setImgData(Data("x"));
    cache.insert(&books[0], *books[0].imgData(), texture);
    cache.insert(&books[1], *books[1].imgData(), texture);
    cache.find(books[0]);
    cache.insert(&books[2], *books[2].imgData(), texture);
    EXPECT_TRUE(cache.find(books[0]));
    EXPECT_FALSE(cache.find(books[1]));
    EXPECT_TRUE(cache.find(books[2]));
}

TEST(CoverCache, ForgetsACoverWhoseDataWasReplaced)
{
    CoverCache cache(2);
    BookInfo book;
    book.setImgData(Data("x"));
    const auto texture = Gdk::Texture::create_for_pixbuf(Gdk::Pixbuf::create(Gdk::Colorspace::RGB, false, 8, 1, 1));
    cache.insert(&book, *book.imgData(), texture);
    book.setImgData(Data("y"));
    EXPECT_FALSE(cache.find(book));
}

}
