#include "library_views/BookIndex.hpp"

#include "base/SearchText.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using Titles = std::vector<std::string>;

BookInfoPtr makeBook(const std::string& title, const std::string& author, const std::string& isbn = "")
{
    auto book = std::make_shared<BookInfo>();
    book->setTitle(title);
    book->setAuthor(author);
    book->setIsbn(isbn);
    return book;
}

BookArray shelf()
{
    return std::make_shared<const std::vector<BookInfoPtr>>(std::vector<BookInfoPtr> {
        makeBook("Wuthering Heights", "Emily Brontë", "9780141439556"),
        makeBook("The Sea", "John Banville", "urn:uuid:4711"),
        makeBook("Agnes Grey", "Anne Brontë", "9780140432107"),
        makeBook("Shirley", "Charlotte Brontë", "<not found>"),
    });
}

// Accepts all results.
bool always()
{
    return true;
}

Titles titlesOf(const ShownBooks& shown)
{
    Titles titles;
    for (std::size_t position = 0; position < shown.size(); ++position)
        titles.push_back(shown.at(position)->title().value_or("-"));
    return titles;
}

struct Index : testing::Test {
    Titles find(const std::string& pattern, BookOrder order = BookOrder::AsAdded, std::vector<BookInfoPtr> read = {})
    {
        const auto found = index.find({ searchWords(pattern), order, std::move(read) }, always);
        return found ? titlesOf(*found) : Titles { "given up" };
    }

    BookArray books = shelf();
    BookIndex index { books };
};

}

TEST_F(Index, FindsByTitleAuthorAndIdentifier)
{
    EXPECT_EQ(find("heights"), Titles { "Wuthering Heights" });
    EXPECT_EQ(find("banville"), Titles { "The Sea" });
    EXPECT_EQ(find("0140432"), Titles { "Agnes Grey" });
}

TEST_F(Index, FindsWithoutCaseAndAccentsInTheOrderOfTheCatalogue)
{
    EXPECT_EQ(find("BRONTE"), (Titles { "Wuthering Heights", "Agnes Grey", "Shirley" }));
}

TEST_F(Index, FindsBooksThatHaveEveryWordWhereverItStands)
{
    EXPECT_EQ(find("bronte 978"), (Titles { "Wuthering Heights", "Agnes Grey" }));
    EXPECT_EQ(find("bronte sea"), Titles {});
}

TEST_F(Index, AWordDoesNotReachFromOneTextIntoTheNext)
{
    EXPECT_EQ(find("seajohn"), Titles {});
}

TEST_F(Index, APatternWithoutAWordFindsEveryBook)
{
    EXPECT_EQ(find(" \u0301 ").size(), 4U);
}

TEST_F(Index, APatternOfTenThousandCharactersFindsNothing)
{
    EXPECT_EQ(find(std::string(10'000, 'e')), Titles {});
    std::string words;
    while (words.size() < 10'000)
        words += "w" + std::to_string(words.size()) + " ";
    EXPECT_EQ(find(words), Titles {});
}

TEST_F(Index, BooksWithoutTextsAreFoundByNothing)
{
    BookIndex bare(std::make_shared<const std::vector<BookInfoPtr>>(2, std::make_shared<BookInfo>()));
    EXPECT_EQ(bare.find({ searchWords("a"), BookOrder::AsAdded, {} }, always)->size(), 0U);
    EXPECT_EQ(bare.find({ {}, BookOrder::Author, {} }, always)->size(), 2U);
}

TEST_F(Index, OrdersByTitleAndLeavesArticlesInFront)
{
    EXPECT_EQ(find("", BookOrder::Title), (Titles { "Agnes Grey", "Shirley", "The Sea", "Wuthering Heights" }));
}

TEST_F(Index, OrdersByAuthorAndBooksOfOneAuthorByTitle)
{
    books = std::make_shared<const std::vector<BookInfoPtr>>(std::vector<BookInfoPtr> {
        makeBook("Walden", "Thoreau"), makeBook("Villette", "Brontë"), makeBook("Shirley", "Brontë") });
    index = BookIndex(books);
    EXPECT_EQ(find("", BookOrder::Author), (Titles { "Shirley", "Villette", "Walden" }));
}

TEST_F(Index, BooksWithoutAnAuthorOrTitleComeLast)
{
    books = std::make_shared<const std::vector<BookInfoPtr>>(
        std::vector<BookInfoPtr> { makeBook("<not found>", "<unknown>"), makeBook("Zorn", "Zweig") });
    index = BookIndex(books);
    EXPECT_EQ(find("", BookOrder::Author), (Titles { "Zorn", "<not found>" }));
    EXPECT_EQ(find("", BookOrder::Title), (Titles { "Zorn", "<not found>" }));
}

TEST_F(Index, BooksReadLastComeFirstAndTheOthersAsTheyWereAdded)
{
    EXPECT_EQ(find("", BookOrder::LastRead, { (*books)[3], (*books)[1] }),
        (Titles { "Shirley", "The Sea", "Wuthering Heights", "Agnes Grey" }));
}

TEST_F(Index, BooksThatWereReadAndHaveLeftTheLibraryAreNotShown)
{
    EXPECT_EQ(find("", BookOrder::LastRead, { makeBook("Gone", ""), (*books)[1] }).front(), "The Sea");
    EXPECT_EQ(find("", BookOrder::LastRead, { makeBook("Gone", "") }).size(), 4U);
}

TEST_F(Index, KeepsTheOrderOfWhatIsFound)
{
    EXPECT_EQ(find("bronte", BookOrder::Title), (Titles { "Agnes Grey", "Shirley", "Wuthering Heights" }));
}

TEST_F(Index, GivesUpWhenNobodyWantsTheResult)
{
    EXPECT_FALSE(index.find({ searchWords("bronte"), BookOrder::AsAdded, {} }, [] { return false; }));
}

TEST(ShownBooks, OfAWholeArrayHaveTheirPlaces)
{
    const ShownBooks shown(shelf());
    EXPECT_EQ(shown.size(), 4U);
    EXPECT_EQ(shown.indexesAt({ 1, 3 }), (std::vector<std::size_t> { 1, 3 }));
    EXPECT_EQ(shown.positionsOf({ 0, 2 }), (std::vector<std::size_t> { 0, 2 }));
}

TEST(ShownBooks, KnowTheIndexOfEachPosition)
{
    const ShownBooks shown(shelf(), { 3, 0 });
    EXPECT_EQ(shown.at(0)->title(), "Shirley");
    EXPECT_EQ(shown.indexesAt({ 0, 1 }), (std::vector<std::size_t> { 0, 3 }));
    EXPECT_TRUE(shown.indexesAt({ 2 }).empty());
}

TEST(ShownBooks, BooksThatAreHiddenHaveNoPosition)
{
    const ShownBooks shown(shelf(), { 3, 0 });
    EXPECT_EQ(shown.positionsOf({ 0, 1, 3 }), (std::vector<std::size_t> { 0, 1 }));
    EXPECT_TRUE(shown.positionsOf({ 1, 2 }).empty());
}

}
