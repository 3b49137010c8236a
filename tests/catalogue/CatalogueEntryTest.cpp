#include "catalogue/CatalogueEntry.hpp"

#include "base/Numbers.hpp"
#include "store/UserDefaults.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>
#include <limits>

namespace pagora {

namespace {

std::shared_ptr<BookInfo> wholeBook()
{
    auto book = std::make_shared<BookInfo>();
    book->setType("fixed");
    book->setEpubPath("/library/Sea.epub");
    book->setTitle("The Sea");
    book->setAuthor("A. Sailor");
    book->setIsbn("9780000000017");
    book->setImgData(Data("jpeg bytes"));
    book->setLastIndex(3);
    book->setLastCap(1200);
    book->setFixedWidth(640);
    book->setFixedHeight(480);
    book->setFiles({ Url::file("/books/Sea/one.xhtml"), Url::file("/books/Sea/two words.xhtml") });
    book->setContent(Value::Array { Value::Dictionary { { "text", "One" }, { "src", "/books/Sea/one.xhtml" } } });
    book->setBookPath("/books/Sea");
    return book;
}

std::vector<std::string> keysOf(const Value& entry)
{
    std::vector<std::string> keys;
    for (const auto& [key, value] : *entry.dictionary())
        keys.push_back(key);
    return keys;
}

}

TEST(BookInfo, ANewRecordIsReflowableAndEmpty)
{
    const BookInfo book;
    EXPECT_EQ(book.type(), "default");
    EXPECT_TRUE(book.files().empty());
    EXPECT_EQ(book.content(), Value::Array {});
    EXPECT_FALSE(book.unPacked());
    EXPECT_FALSE(book.errors());
    EXPECT_EQ(book.title(), std::nullopt);
    EXPECT_EQ(book.bookPath(), std::nullopt);
    EXPECT_EQ(book.lastIndex() + book.lastCap() + book.fixedWidth() + book.fixedHeight(), 0u);
}

TEST(CatalogueEntry, AWholeRecordIsWrittenUnderEveryKey)
{
    const Value entry = entryFromBook(*wholeBook());
    EXPECT_EQ(stringFrom(entry.find("Type")), "fixed");
    EXPECT_EQ(stringFrom(entry.find("ePubPath")), "/library/Sea.epub");
    EXPECT_EQ(stringFrom(entry.find("Title")), "The Sea");
    EXPECT_EQ(stringFrom(entry.find("Author")), "A. Sailor");
    EXPECT_EQ(stringFrom(entry.find("ISBN")), "9780000000017");
    EXPECT_EQ(entry.find("CoverImage")->data()->bytes(), "jpeg bytes");
    EXPECT_EQ(*entry.find("LastInd")->integer(), 3);
    EXPECT_EQ(*entry.find("LastCap")->integer(), 1200);
    EXPECT_EQ(*entry.find("fixedWidth")->integer(), 640);
    EXPECT_EQ(*entry.find("fixedHeight")->integer(), 480);
    EXPECT_EQ(*entry.find("Files"), Value(Value::Array { "/books/Sea/one.xhtml", "/books/Sea/two words.xhtml" }));
    EXPECT_EQ(*entry.find("Content"), Value(*wholeBook()->content()));
    EXPECT_EQ(stringFrom(entry.find("BookLoc")), "/books/Sea");
    EXPECT_EQ(entry.dictionary()->size(), 13u);
}

TEST(CatalogueEntry, WritingStopsAtTheFirstValueThatIsMissing)
{
    const auto book = wholeBook();
    book->setAuthor(std::nullopt);
    EXPECT_EQ(keysOf(entryFromBook(*book)),
        (std::vector<std::string> { "BookLoc", "Content", "Files", "Title", "Type", "ePubPath" }));
}

TEST(CatalogueEntry, ARecordWithoutCoverIsWrittenWithoutItsPosition)
{
    const auto book = wholeBook();
    book->setImgData(std::nullopt);
    EXPECT_EQ(keysOf(entryFromBook(*book)),
        (std::vector<std::string> { "Author", "BookLoc", "Content", "Files", "ISBN", "Title", "Type", "ePubPath" }));
}

TEST(CatalogueEntry, ARecordWithoutFilesIsWrittenWithAnEmptyArray)
{
    const Value entry = entryFromBook(BookInfo());
    EXPECT_EQ(*entry.find("Files"), Value(Value::Array {}));
    EXPECT_EQ(*entry.find("Content"), Value(Value::Array {}));
}

TEST(CatalogueEntry, ARecordWithoutFolderIsWrittenWithoutIt)
{
    const auto book = wholeBook();
    book->setBookPath(std::nullopt);
    EXPECT_EQ(entryFromBook(*book).find("BookLoc"), nullptr);
}

TEST(CatalogueEntry, NumbersAreWrittenAsTheirLow32Bits)
{
    const auto book = wholeBook();
    book->setLastIndex((std::uint64_t { 7 } << 32) + 5);
    book->setLastCap(std::numeric_limits<std::uint32_t>::max());
    const Value entry = entryFromBook(*book);
    EXPECT_EQ(*entry.find("LastInd")->integer(), 5);
    EXPECT_EQ(*entry.find("LastCap")->integer(), -1);
}

TEST(CatalogueEntry, AnEntryCutOffAtTheAuthorLoadsWithNullsAndZeros)
{
    const auto book = wholeBook();
    book->setAuthor(std::nullopt);
    const auto loaded = bookFromEntry(entryFromBook(*book));
    EXPECT_EQ(loaded->title(), "The Sea");
    EXPECT_EQ(loaded->author(), std::nullopt);
    EXPECT_EQ(loaded->isbn(), std::nullopt);
    EXPECT_EQ(loaded->imgData(), std::nullopt);
    EXPECT_FALSE(loaded->cover());
    EXPECT_EQ(loaded->lastIndex(), 0u);
    EXPECT_EQ(loaded->lastCap(), 0u);
    EXPECT_EQ(loaded->fixedWidth(), 0u);
    EXPECT_EQ(loaded->fixedHeight(), 0u);
}

TEST(CatalogueEntry, TheStoredPositionIsLoaded)
{
    const auto loaded = bookFromEntry(Value::Dictionary { { "LastInd", 3 }, { "LastCap", 1200 } });
    EXPECT_EQ(loaded->lastIndex(), 3u);
    EXPECT_EQ(loaded->lastCap(), 1200u);
}

TEST(CatalogueEntry, StoredFilesLoadAsFileUrlsInTheirOrder)
{
    const auto loaded
        = bookFromEntry(Value::Dictionary { { "Files", Value::Array { "/b/two words.xhtml", "/b/a.xhtml" } } });
    ASSERT_EQ(loaded->files().size(), 2u);
    EXPECT_TRUE(loaded->files()[0].isFile());
    EXPECT_EQ(loaded->files()[0].path(), "/b/two words.xhtml");
    EXPECT_EQ(loaded->files()[1].path(), "/b/a.xhtml");
}

TEST(CatalogueEntry, MissingFilesLeaveTheFilesEmpty)
{
    EXPECT_TRUE(bookFromEntry(Value::Dictionary {})->files().empty());
}

TEST(CatalogueEntry, MissingContentLeavesTheContentNull)
{
    EXPECT_EQ(bookFromEntry(Value::Dictionary {})->content(), std::nullopt);
}

TEST(CatalogueEntry, AMissingTypeLoadsAsNull)
{
    EXPECT_EQ(bookFromEntry(Value::Dictionary {})->type(), std::nullopt);
}

TEST(CatalogueEntry, AnEntryThatStayedEncodedGivesTheSameRecord)
{
    const test::TemporaryFolder folder;
    const Value::Dictionary whole = *entryFromBook(*wholeBook()).dictionary();
    auto odd = whole;
    odd.insert_or_assign("Title", 1984);
    odd.insert_or_assign("LastInd", "12");
    odd.insert_or_assign("LastCap", 3.7);
    odd.insert_or_assign("LastPlace", "0.25");
    odd.insert_or_assign("CoverImage", "none");
    odd.insert_or_assign("Content", "none");
    odd.erase("Type");
    {
        UserDefaults defaults(folder.path());
        defaults.setObject("BookData", Value::Array { whole, odd });
        ASSERT_TRUE(defaults.synchronize());
    }
    const UserDefaults defaults(folder.path());
    const auto stored = defaults.objectForKey("BookData");
    ASSERT_EQ(stored->array()->size(), 2u);
    for (const auto& entry : { whole, odd }) {
        const auto& encoded = stored->array()->at(entry == odd ? 1 : 0);
        ASSERT_TRUE(encoded.source());
        const auto expected = bookFromEntry(entry);
        const auto loaded = bookFromEntry(encoded);
        EXPECT_EQ(loaded->type(), expected->type());
        EXPECT_EQ(loaded->epubPath(), expected->epubPath());
        EXPECT_EQ(loaded->title(), expected->title());
        EXPECT_EQ(loaded->author(), expected->author());
        EXPECT_EQ(loaded->isbn(), expected->isbn());
        EXPECT_EQ(loaded->imgData().has_value(), expected->imgData().has_value());
        EXPECT_EQ(loaded->lastIndex(), expected->lastIndex());
        EXPECT_EQ(loaded->lastCap(), expected->lastCap());
        EXPECT_EQ(loaded->lastPlace(), expected->lastPlace());
        EXPECT_EQ(loaded->fixedWidth(), expected->fixedWidth());
        EXPECT_EQ(loaded->fixedHeight(), expected->fixedHeight());
        EXPECT_EQ(loaded->files(), expected->files());
        EXPECT_EQ(loaded->content(), expected->content());
        EXPECT_EQ(loaded->bookPath(), expected->bookPath());
    }
}

TEST(CatalogueEntry, AWholeRecordComesBack)
{
    const auto book = wholeBook();
    const auto loaded = bookFromEntry(entryFromBook(*book));
    EXPECT_EQ(loaded->type(), "fixed");
    EXPECT_EQ(loaded->epubPath(), "/library/Sea.epub");
    EXPECT_EQ(loaded->files(), book->files());
    EXPECT_EQ(loaded->content(), book->content());
    EXPECT_EQ(loaded->fixedWidth(), 640u);
    EXPECT_EQ(loaded->fixedHeight(), 480u);
    EXPECT_EQ(loaded->bookPath(), "/books/Sea");
    EXPECT_FALSE(loaded->unPacked());
}

TEST(CatalogueEntry, ACoverThatDoesNotDecodeGivesARecordWithoutCover)
{
    const auto loaded = bookFromEntry(Value::Dictionary { { "CoverImage", Data("no picture") } });
    EXPECT_TRUE(loaded->imgData());
    EXPECT_FALSE(loaded->cover());
}

TEST(CatalogueEntry, ValuesOfAnotherKindLoadAsMissing)
{
    const auto loaded = bookFromEntry(Value::Dictionary {
        { "Files", "no array" }, { "Content", 4 }, { "CoverImage", "text" }, { "Title", Value::Array {} } });
    EXPECT_TRUE(loaded->files().empty());
    EXPECT_EQ(loaded->content(), std::nullopt);
    EXPECT_EQ(loaded->imgData(), std::nullopt);
    EXPECT_EQ(loaded->title(), std::nullopt);
}

TEST(CatalogueEntry, ANewPositionLeavesTheRestOfTheEntryAlone)
{
    const Value entry = entryFromBook(*wholeBook());
    const Value moved = entryWithPosition(entry, 8, 40, 0.25);
    EXPECT_EQ(*moved.find("LastInd")->integer(), 8);
    EXPECT_EQ(*moved.find("LastCap")->integer(), 40);
    EXPECT_EQ(*moved.find("LastPlace")->real(), 0.25);
    EXPECT_EQ(moved.dictionary()->size(), entry.dictionary()->size() + 1);
    EXPECT_TRUE(moved.find("CoverImage")->isSameAs(*entry.find("CoverImage")));
}

TEST(CatalogueEntry, AnUnknownPlaceKeepsTheOneThatIsStored)
{
    const Value entry = entryWithPosition(Value::Dictionary {}, 1, 0, 0.25);
    EXPECT_EQ(*entryWithPosition(entry, 2, 0, std::nullopt).find("LastPlace")->real(), 0.25);
}

TEST(CatalogueEntry, TheStoredPlaceIsLoaded)
{
    EXPECT_EQ(bookFromEntry(Value::Dictionary { { "LastPlace", 0.625 } })->lastPlace(), 0.625);
    EXPECT_EQ(bookFromEntry(Value::Dictionary {})->lastPlace(), std::nullopt);
}

}
