#include "catalogue/Catalogue.hpp"

#include "catalogue/CatalogueEntry.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

Value storedBook(const std::string& name)
{
    return Value::Dictionary { { "Title", name }, { "ePubPath", "/library/" + name + ".epub" } };
}

std::vector<std::string> titlesOf(const Catalogue& catalogue)
{
    std::vector<std::string> titles;
    for (const auto& book : *catalogue.bookList())
        titles.push_back(book->title().value_or(""));
    return titles;
}

std::vector<std::string> storedTitlesOf(const Catalogue& catalogue)
{
    std::vector<std::string> titles;
    const Value stored = catalogue.bookData();
    for (const auto& entry : *stored.array())
        titles.push_back(*entry.find("Title")->string());
    return titles;
}

struct CatalogueOfThree : testing::Test {
    CatalogueOfThree()
    {
        catalogue.setBookData({ storedBook("a"), storedBook("b"), storedBook("c") });
        catalogue.bookDataToList();
    }
    Catalogue catalogue;
};

}

TEST_F(CatalogueOfThree, LoadsARecordAndALocationForEachEntryInStoredOrder)
{
    EXPECT_EQ(catalogue.count(), 3u);
    EXPECT_EQ(titlesOf(catalogue), (std::vector<std::string> { "a", "b", "c" }));
    EXPECT_EQ(catalogue.epubLocations(),
        (std::vector<std::string> { "/library/a.epub", "/library/b.epub", "/library/c.epub" }));
}

TEST(Catalogue, AnEmptyStoredArrayGivesNoRecords)
{
    Catalogue catalogue;
    catalogue.setBookData({});
    catalogue.bookDataToList();
    EXPECT_EQ(catalogue.count(), 0u);
    EXPECT_TRUE(catalogue.bookList()->empty());
    EXPECT_TRUE(catalogue.epubLocations().empty());
    EXPECT_EQ(catalogue.lastBook(), nullptr);
}

TEST_F(CatalogueOfThree, ANewBookIsTheLastOfAllThreeArrays)
{
    const auto book = std::make_shared<BookInfo>();
    catalogue.append(book, storedBook("d"), "d.epub");
    EXPECT_EQ(catalogue.lastBook(), book);
    EXPECT_EQ(storedTitlesOf(catalogue).back(), "d");
    EXPECT_EQ(catalogue.epubLocations().back(), "d.epub");
    EXPECT_EQ(catalogue.bookList()->size(), catalogue.count());
}

TEST_F(CatalogueOfThree, RemovalTakesOneIndexOutOfAllThreeArrays)
{
    catalogue.removeAt(1);
    EXPECT_EQ(titlesOf(catalogue), (std::vector<std::string> { "a", "c" }));
    EXPECT_EQ(storedTitlesOf(catalogue), (std::vector<std::string> { "a", "c" }));
    EXPECT_EQ(catalogue.epubLocations(), (std::vector<std::string> { "/library/a.epub", "/library/c.epub" }));
}

TEST_F(CatalogueOfThree, RemovalBeyondTheEndChangesNothing)
{
    catalogue.removeAt(3);
    EXPECT_EQ(catalogue.count(), 3u);
}

TEST(Catalogue, EachIdentifierTakesTheFirstBookThatIsLeftWithIt)
{
    Catalogue catalogue;
    Value::Array stored;
    for (const auto& [name, isbn] : std::vector<std::pair<std::string, std::string>> {
             { "a", "1" }, { "b", "2" }, { "c", "1" }, { "d", "3" }, { "e", "1" } })
        stored.push_back(Value::Dictionary { { "Title", name }, { "ISBN", isbn }, { "ePubPath", name + ".epub" } });
    stored.push_back(storedBook("without"));
    catalogue.setBookData(std::move(stored));
    catalogue.bookDataToList();
    EXPECT_EQ(catalogue.removeFirstWithISBNs({ "1", "2", "1", "2", "4" }),
        (std::vector<bool> { true, true, true, false, false }));
    const std::vector<std::string> left { "d", "e", "without" };
    EXPECT_EQ(titlesOf(catalogue), left);
    EXPECT_EQ(storedTitlesOf(catalogue), left);
    EXPECT_EQ(catalogue.epubLocations(), (std::vector<std::string> { "d.epub", "e.epub", "/library/without.epub" }));
}

TEST_F(CatalogueOfThree, AnEntryIsReplacedAtItsRecordsIndex)
{
    const auto second = (*catalogue.bookList())[1];
    EXPECT_TRUE(catalogue.replaceEntry(second, storedBook("changed")));
    EXPECT_EQ(storedTitlesOf(catalogue), (std::vector<std::string> { "a", "changed", "c" }));
    EXPECT_EQ(*catalogue.entryOf(second)->find("Title")->string(), "changed");
}

TEST_F(CatalogueOfThree, RecordsAreKnownByIdentity)
{
    const auto twin = bookFromEntry(storedBook("b"));
    EXPECT_EQ(catalogue.entryOf(twin), std::nullopt);
    EXPECT_FALSE(catalogue.replaceEntry(twin, storedBook("x")));
    EXPECT_EQ(storedTitlesOf(catalogue), (std::vector<std::string> { "a", "b", "c" }));
}

TEST_F(CatalogueOfThree, KnownNamesAreOneText)
{
    catalogue.append(std::make_shared<BookInfo>(), storedBook("d"), "d.epub");
    EXPECT_EQ(catalogue.knownNames(), "/library/a.epub ## /library/b.epub ## /library/c.epub ## d.epub");
}

TEST_F(CatalogueOfThree, KnowsTheArchivesOfItsBooks)
{
    EXPECT_TRUE(catalogue.holdsArchive("/library/b.epub"));
    EXPECT_FALSE(catalogue.holdsArchive("b.epub"));
    EXPECT_FALSE(catalogue.holdsArchive("/library/d.epub"));
}

TEST_F(CatalogueOfThree, AListThatWasHandedOutStaysAsItWas)
{
    const auto before = catalogue.bookList();
    catalogue.removeAt(0);
    EXPECT_EQ(before->size(), 3u);
    EXPECT_EQ(catalogue.bookList()->size(), 2u);
}

TEST_F(CatalogueOfThree, OneListIsSharedUntilTheCatalogueChanges)
{
    EXPECT_EQ(catalogue.bookList(), catalogue.bookList());
}

TEST_F(CatalogueOfThree, SavingStoresTheWholeArray)
{
    const test::TemporaryFolder folder;
    {
        UserDefaults defaults(folder.path());
        catalogue.save(defaults);
    }
    const UserDefaults defaults(folder.path());
    EXPECT_EQ(defaults.objectForKey("BookData"), catalogue.bookData());
}

}
