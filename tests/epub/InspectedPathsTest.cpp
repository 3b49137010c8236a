// Malicious names and paths in books.

#include "tests/epub/EpubInspectionTest.hpp"

#include <algorithm>
#include <filesystem>

namespace pagora {

namespace {

namespace fs = std::filesystem;
using test::contentsOf;
using test::makeFile;
using test::MemberKind;

}

TEST_F(EpubInspectionTest, EscapesInFileNamesAreReplaced)
{
    const auto book
        = inspect(withPackage(packageMember, "<item id='a' href='a%20b.xhtml'/><item id='b' href='%FF.xhtml'/>",
            "<itemref idref='a'/><itemref idref='b'/>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(filesOf(book), (Lines { "OEBPS/a b.xhtml", "OEBPS/%FF.xhtml" }));
}

TEST_F(EpubInspectionTest, FilesOutsideTheBookAreDropped)
{
    const auto book = inspect(withPackage(packageMember,
        "<item id='a' href='../../../../../../etc/passwd'/><item id='b' href='%2e%2e/../Other/x'/><item id='c' "
        "href='a%00b'/>"
        "<item id='d' href='../text/d.xhtml'/>",
        "<itemref idref='a'/><itemref idref='b'/><itemref idref='c'/><itemref idref='d'/>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(filesOf(book), (Lines { "OEBPS/a%00b", "OEBPS/../text/d.xhtml" }));
}

TEST_F(EpubInspectionTest, PathsThatStayInTheBookAreFollowed)
{
    const auto book = inspect(withPackage("OEBPS/package/content.opf",
        "<item id='c' href='../my%20img/c.jpg' media-type='image/jpeg'/><item id='ncx' href='../my%20toc.ncx'/>"
        "<item id='a' href='../text/a.xhtml'/>",
        "<itemref idref='a'/>", "<meta name='cover' content='c'/>")
                                  .member("OEBPS/my img/c.jpg", test::picture(1000, 1000))
                                  .member("OEBPS/my toc.ncx", "<n><text>A</text><content src='../text/a.xhtml'/></n>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->cover()->size(), (Size { 106, 106 }));
    ASSERT_EQ(book->content()->size(), 1u);
    EXPECT_EQ(src(book, 0), _folder.path("cache/_books/Book/OEBPS/package/../text/a.xhtml"));
}

TEST_F(EpubInspectionTest, CoverInTheOtherUnicodeFormIsFound)
{
    const auto book = inspect(withPackage("content.opf", "<item id='c' href='\u00E9.jpg' media-type='image/jpeg'/>", "",
        "<meta name='cover' content='c'/>")
                                  .member("e\u0301.jpg", test::picture(1000, 1000)));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->cover()->size(), (Size { 106, 106 }));
}

TEST_F(EpubInspectionTest, CoverOutsideTheScratchFolderIsNotRead)
{
    makeFile(_folder.path("cover.jpg"), test::picture(1000, 1000));
    const auto book = inspect(withPackage("content.opf",
        "<item id='c' href='../../cover.jpg' media-type='image/jpeg'/>", "", "<meta name='cover' content='c'/>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->cover()->size(), (Size { 106, 156 }));
}

TEST_F(EpubInspectionTest, ArchiveNamesOfDotsKeepTheBookInItsOwnFolder)
{
    for (const std::string name : { "..epub", "...epub" }) {
        const auto book = inspectFile(EpubBuilder().write(_folder.path(name)));
        ASSERT_TRUE(book) << name;
        EXPECT_EQ(book->bookPath(), _folder.path("cache/_books/" + name));
    }
}

TEST_F(EpubInspectionTest, ArchiveNameWithAnEscapeIsKept)
{
    const auto book = inspectFile(EpubBuilder().write(_folder.path("50%20off.epub")));
    ASSERT_TRUE(book);
    EXPECT_EQ(filesOf(book).size(), 3u);
    EXPECT_EQ(src(book, 0), _folder.path("cache/_books/50%20off/OEBPS/chapter1.xhtml"));
}

TEST_F(EpubInspectionTest, ArchiveNameThatIsNotUtf8GivesAFolderThatIs)
{
    const auto book = inspectFile(EpubBuilder().write(_folder.path("caf\xE9.epub")));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->epubPath(), _folder.path("caf\xE9.epub"));
    EXPECT_EQ(book->bookPath(), _folder.path("cache/_books/caf\uFFFD"));
}

TEST_F(EpubInspectionTest, LineOfANameThatIsNotUtf8IsText)
{
    inspectFile(makeFile(_folder.path("caf\xE9.epub"), ""));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "caf\uFFFD.epub --> epub is corrupted (mimetype not identified)" }));
}

TEST_F(EpubInspectionTest, FileThatIsNoArchiveHasNoMimetype)
{
    createFolder(_folder.path("folder.epub"));
    fs::create_symlink(_folder.path("nothing"), _folder.path("link.epub"));
    const auto truncated = EpubBuilder().write(_folder.path("truncated.epub"));
    fs::resize_file(truncated, 300);
    makeFile(_folder.path("empty.epub"), "");
    makeFile(_folder.path("text.epub"), "some text");
    for (const std::string name : { "folder", "link", "truncated", "empty", "text", "missing" }) {
        _hub.faultyBooks.clear();
        EXPECT_FALSE(inspectFile(_folder.path(name + ".epub")));
        EXPECT_EQ(_hub.faultyBooks, (Lines { name + ".epub --> epub is corrupted (mimetype not identified)" }));
    }
}

TEST_F(EpubInspectionTest, ArchiveThatExpandsTooFarIsRejectedWithOneLine)
{
    EXPECT_FALSE(inspect(EpubBuilder().member("bomb", std::string(80u << 20, '\0'))));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is too large to be opened safely" }));
    EXPECT_TRUE(folderEntries(_hub.layout._dataPath)->empty());
}

TEST_F(EpubInspectionTest, EncryptedMimetypeIsNoMimetype)
{
    EXPECT_FALSE(inspect(EpubBuilder().member("mimetype", "application/epub+zip", MemberKind::Encrypted)));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is corrupted (mimetype not identified)" }));
}

TEST_F(EpubInspectionTest, ContainerThatReadsOtherFilesGivesNothing)
{
    const auto canary = makeFile(_folder.path("canary"), "OEBPS/content.opf");
    EXPECT_FALSE(inspect(EpubBuilder().member("META-INF/container.xml",
        "<!DOCTYPE c [<!ENTITY e SYSTEM 'file://" + canary + "'>]><c><rootfile full-path='&e;'/></c>")));
    EXPECT_EQ(_hub.faultyBooks.size(), 1u);
}

TEST_F(EpubInspectionTest, NothingIsWrittenOutsideTheScratchFolder)
{
    inspect(EpubBuilder().member("../evil", "x").member("/evil", "x").member("META-INF/../../evil", "x"));
    auto entries = folderEntries(_folder.path());
    ASSERT_TRUE(entries);
    std::sort(entries->begin(), entries->end());
    EXPECT_EQ(*entries, (Lines { "Book.epub", "cache" }));
    EXPECT_EQ(folderEntries(_folder.path("cache")), (Lines { "_data" }));
}

}
