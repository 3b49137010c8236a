#include "epub/Unpacking.hpp"

#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

TEST(Unpacking, MembersThatExistAreExtracted)
{
    test::TemporaryFolder folder;
    const auto archive = test::EpubBuilder().write(folder.path("x.epub"));
    unpackFromBook(archive, { "mimetype", "META-INF/encryption.xml" }, folder.path("data"));
    EXPECT_EQ(folderEntries(folder.path("data")), (std::vector<std::string> { "mimetype" }));
}

TEST(Unpacking, AskingForNothingExtractsNothing)
{
    test::TemporaryFolder folder;
    unpackFromBook(test::EpubBuilder().write(folder.path("x.epub")), {}, folder.path("data"));
    EXPECT_FALSE(fileExists(folder.path("data")));
}

TEST(Unpacking, FileThatIsNoArchiveLeavesTheDestinationUnchanged)
{
    test::TemporaryFolder folder;
    test::makeFile(folder.path("data/mimetype"), "of another book");
    test::makeFile(folder.path("data/META-INF/container.xml"), "<container/>");
    unpackFromBook(test::makeFile(folder.path("x.epub"), "no archive"), { "mimetype" }, folder.path("data"));
    EXPECT_EQ(test::contentsOf(folder.path("data/mimetype")), "of another book");
    EXPECT_EQ(test::contentsOf(folder.path("data/META-INF/container.xml")), "<container/>");
    EXPECT_EQ(folderEntries(folder.path("data"))->size(), 2U);
}

TEST(Unpacking, WholeBookIsExtractedIntoItsFolder)
{
    test::TemporaryFolder folder;
    BookInfo book;
    book.setEpubPath(test::EpubBuilder().write(folder.path("x.epub")));
    book.setBookPath(folder.path("books/x"));
    unZipBook(book);
    EXPECT_TRUE(isPlainFile(folder.path("books/x/OEBPS/chapter3.xhtml")));
}

TEST(Unpacking, StoppedExtractionEndsEarly)
{
    test::TemporaryFolder folder;
    BookInfo book;
    book.setEpubPath(test::EpubBuilder().write(folder.path("x.epub")));
    book.setBookPath(folder.path("books/x"));
    std::stop_source stop;
    stop.request_stop();
    unZipBook(book, stop.get_token());
    EXPECT_FALSE(fileExists(folder.path("books/x/mimetype")));
}

}
