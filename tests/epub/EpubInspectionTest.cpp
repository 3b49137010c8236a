#include "tests/epub/EpubInspectionTest.hpp"

#include "base/Log.hpp"
#include "tests/support/ForkedTest.hpp"

#include <filesystem>
#include <sys/stat.h>

namespace pagora {

namespace {

namespace fs = std::filesystem;
using test::contentsOf;
using test::makeFile;
using test::MemberKind;

}

TEST_F(EpubInspectionTest, ValidBookGivesARecord)
{
    const auto book = inspect(EpubBuilder().title("T").author("A").identifier("1").chapters(2).cover(600, 800));
    ASSERT_TRUE(book);
    EXPECT_TRUE(_hub.faultyBooks.empty());
    EXPECT_EQ(_hub._bookInfo, book);
    EXPECT_EQ(book->epubPath(), _folder.path("Book.epub"));
    EXPECT_EQ(book->bookPath(), _folder.path("cache/_books/Book"));
    EXPECT_EQ(_hub._epubPath, book->bookPath());
    EXPECT_EQ(book->type(), "default");
    EXPECT_EQ(book->title(), "T");
    EXPECT_EQ(book->author(), "A");
    EXPECT_EQ(book->isbn(), "1");
    EXPECT_EQ(filesOf(book), (Lines { "OEBPS/chapter1.xhtml", "OEBPS/chapter2.xhtml" }));
    ASSERT_EQ(book->content()->size(), 2u);
    EXPECT_EQ(src(book, 1), *book->bookPath() + "/OEBPS/chapter2.xhtml");
    EXPECT_EQ(book->cover()->size(), (Size { 106, 141 }));
    EXPECT_EQ(book->fixedWidth(), 0u);
}

TEST_F(EpubInspectionTest, InspectionIsLogged)
{
    Lines lines;
    LogCapture capture([&](const std::string& line) { lines.push_back(line); });
    inspect(EpubBuilder());
    EXPECT_EQ(lines,
        (Lines { "Book filePath: " + _folder.path("cache/_books/Book/OEBPS"), "subfolder - OEBPS",
            "cover file - OEBPS/images/cover.jpg" }));
}

TEST_F(EpubInspectionTest, MimetypeOfTheOtherFormatIsRejected)
{
    EXPECT_FALSE(inspect(EpubBuilder().member("mimetype", "application/x-ibooks+zip")));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> file is not a ePub ( see the mimetype )" }));
}

TEST_F(EpubInspectionTest, MimetypeIsOnlySearched)
{
    EXPECT_TRUE(inspect(EpubBuilder().member("mimetype", " xepubx \n")));
    EXPECT_FALSE(inspect(EpubBuilder().member("mimetype", "application/EPUB")));
}

TEST_F(EpubInspectionTest, MimetypeThatIsNotAsciiIsRejectedAsTheOtherFormat)
{
    EXPECT_FALSE(inspect(EpubBuilder().member("mimetype",
        "\xEF\xBB\xBF"
        "application/epub+zip")));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> file is not a ePub ( see the mimetype )" }));
}

TEST_F(EpubInspectionTest, MimetypeWithOneByteBeyondAsciiIsRejected)
{
    EXPECT_FALSE(inspect(EpubBuilder().member("mimetype", "application/epub+zip\x80")));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> file is not a ePub ( see the mimetype )" }));
}

TEST_F(EpubInspectionTest, BookWithAWrongCheckSumComesIn)
{
    const auto path = EpubBuilder().title("Right").write(_folder.path("Book.epub"));
    // This is the checksum of the mimetype in both headers.
    const auto sum = contentsOf(path).substr(14, 4);
    test::replaceInFile(path, sum, "summ");
    const auto book = inspectFile(path);
    ASSERT_TRUE(book);
    EXPECT_EQ(book->title(), "Right");
}

TEST_F(EpubInspectionTest, BookAfterOtherBytesComesIn)
{
    const auto path = EpubBuilder().title("Right").write(_folder.path("Book.epub"));
    makeFile(path, "#!/bin/sh\n" + contentsOf(path));
    const auto book = inspectFile(path);
    ASSERT_TRUE(book);
    EXPECT_EQ(book->title(), "Right");
}

TEST_F(EpubInspectionTest, MissingMimetypeIsRejected)
{
    EXPECT_FALSE(inspect(EpubBuilder().without("mimetype")));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is corrupted (mimetype not identified)" }));
}

TEST_F(EpubInspectionTest, EncryptionMemberIsRejectedUnderTheArchivesName)
{
    EXPECT_FALSE(inspect(EpubBuilder().member("META-INF/encryption.xml", "")));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is crypted by DRM" }));
}

TEST_F(EpubInspectionTest, StaleEncryptionFileCounts)
{
    makeFile(_folder.path("cache/_data/META-INF/encryption.xml"), "");
    EXPECT_FALSE(inspect(EpubBuilder()));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is crypted by DRM" }));
}

TEST_F(EpubInspectionTest, MissingContainerIsRejected)
{
    EXPECT_FALSE(inspect(EpubBuilder().without("META-INF/container.xml")));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is corrupted (can't open container.xml)" }));
}

TEST_F(EpubInspectionTest, ContainerThatCannotBeReadIsRejected)
{
    // The old mimetype file is readable; newly extracted files are not.
    makeFile(_folder.path("cache/_data/mimetype"), "application/epub+zip");
    fs::create_directories(_folder.path("cache/_data/META-INF"));
    const auto path = EpubBuilder().without("mimetype").write(_folder.path("Book.epub"));
    // Root can read everything.
    for (const auto& entry : fs::recursive_directory_iterator(_folder.path()))
        fs::permissions(entry, fs::perms(entry.is_directory() ? 0777 : 0644));
    fs::permissions(_folder.path(), fs::perms(0777));
    test::inForkedProcess([&] {
        constexpr uid_t somebodyElse = 65'534;
        ASSERT_TRUE(geteuid() != 0 || setuid(somebodyElse) == 0);
        umask(0777);
        EXPECT_FALSE(inspectFile(path));
        EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub can not be read (permissions denied)" }));
    });
}

TEST_F(EpubInspectionTest, ContainerWithoutAPackageIsRejected)
{
    EXPECT_FALSE(inspect(EpubBuilder().member("META-INF/container.xml", "<container/>")));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is corrupted (content opf-file not found)" }));
}

TEST_F(EpubInspectionTest, MissingPackageIsRejectedAndKeepsTheBookFolder)
{
    EXPECT_FALSE(inspect(EpubBuilder().without(packageMember)));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is corrupted (can't open content opf-file)" }));
    EXPECT_EQ(_hub._epubPath, _folder.path("cache/_books/Book"));
    EXPECT_FALSE(_hub._bookInfo);
}

TEST_F(EpubInspectionTest, PackagePathThatLeadsOutIsNotInTheArchive)
{
    makeFile(_folder.path("secret.opf"), "<package><metadata><dc:title>secret</dc:title></metadata></package>");
    for (const std::string path : { "../../secret.opf", "", "/", "." }) {
        _hub.faultyBooks.clear();
        EXPECT_FALSE(
            inspect(EpubBuilder().member("META-INF/container.xml", "<c><rootfile full-path='" + path + "'/></c>")));
        EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> epub is corrupted (can't open content opf-file)" }))
            << path;
    }
}

TEST_F(EpubInspectionTest, WithoutStoppingAllProblemsAreReported)
{
    const auto book = inspect(
        EpubBuilder().without("mimetype").without("OEBPS/chapter3.xhtml").member("META-INF/encryption.xml", ""),
        StopOnErrors::No);
    EXPECT_FALSE(book);
    EXPECT_EQ(_hub.faultyBooks,
        (Lines { "Book.epub --> epub is corrupted (mimetype not identified)",
            "Book.epub --> file is not a ePub ( see the mimetype )", "Book.epub --> epub is crypted by DRM",
            "Book.epub --> can't open first content file 'OEBPS/chapter3.xhtml'" }));
    EXPECT_EQ(_hub._bookInfo->type(), "x-ibook");
}

TEST_F(EpubInspectionTest, AnyTrueOptionMakesTheBookFixed)
{
    const auto book = inspect(EpubBuilder().member("META-INF/com.apple.ibooks.display-options.xml",
        "<o><option name='fixed-layout'>false</option><option name='open-to-spread'>true</option></o>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->type(), "fixed");
}

TEST_F(EpubInspectionTest, RenditionMetadataAloneDoesNotMakeTheBookFixed)
{
    const auto book = inspect(withPackage(packageMember, "<item id='a' href='chapter1.xhtml'/>", "<itemref idref='a'/>",
        "<meta property='rendition:layout'>pre-paginated</meta>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->type(), "default");
    EXPECT_EQ(book->fixedWidth(), 0u);
    EXPECT_EQ(book->fixedHeight(), 0u);
}

TEST_F(EpubInspectionTest, PackageAtTheTopLevelHasNoFolder)
{
    const auto book = inspect(withPackage("content.opf", "<item id='a' href='a.xhtml'/>", "<itemref idref='a'/>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(filesOf(book), (Lines { "a.xhtml" }));
}

TEST_F(EpubInspectionTest, PictureNamedCoverIsTheCoverWithoutAMeta)
{
    const auto book = inspect(withPackage("content.opf", "", "").member("cover.jpg", test::picture(1000, 1000)));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->cover()->size(), (Size { 106, 106 }));
}

TEST_F(EpubInspectionTest, BookWithoutACoverGetsTheDefaultOne)
{
    const auto book = inspect(EpubBuilder().without("OEBPS/images/cover.jpg"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->cover()->size(), (Size { 106, 156 }));
}

TEST_F(EpubInspectionTest, CoverThatIsNoPictureIsNone)
{
    const auto book = inspect(EpubBuilder().member("OEBPS/images/cover.jpg", "this is no picture"));
    ASSERT_TRUE(book);
    EXPECT_FALSE(book->cover());
    EXPECT_FALSE(book->imgData());
}

TEST_F(EpubInspectionTest, VeryWideCoverIsHandled)
{
    const auto book = inspect(EpubBuilder().cover(30'000, 400));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->cover()->size().height, 1);
}

TEST_F(EpubInspectionTest, FixedBookTakesItsSizeFromTheLastPage)
{
    const auto book = inspect(EpubBuilder().fixedLayout(700, 900).member(
        "OEBPS/chapter3.xhtml", "<html><meta name='viewport' content='width=50,height=60'/></html>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->type(), "fixed");
    EXPECT_EQ(book->fixedWidth(), 50u);
    EXPECT_EQ(book->fixedHeight(), 60u);
}

TEST_F(EpubInspectionTest, LastPageWithoutAViewportGivesTheDefaultSize)
{
    const auto book = inspect(EpubBuilder().fixedLayout(700, 900).member("OEBPS/chapter3.xhtml", "<html/>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->fixedWidth(), 600u);
    EXPECT_EQ(book->fixedHeight(), 800u);
}

TEST_F(EpubInspectionTest, FixedBookWithoutItsLastPageIsRejectedAndKeepsTheRecord)
{
    EXPECT_FALSE(inspect(EpubBuilder().fixedLayout(700, 900).without("OEBPS/chapter3.xhtml")));
    EXPECT_EQ(_hub.faultyBooks, (Lines { "Book.epub --> can't open first content file 'OEBPS/chapter3.xhtml'" }));
    EXPECT_TRUE(_hub._bookInfo);
}

TEST_F(EpubInspectionTest, BookWithoutContentsHasAnEmptyList)
{
    const auto book = inspect(EpubBuilder().without("OEBPS/toc.ncx"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->content(), Value::Array {});
}

TEST_F(EpubInspectionTest, ContentsThatTheManifestDoesNotNameAreFoundByTheirUsualName)
{
    const auto book = inspect(withPackage(packageMember, "", "").member("OEBPS/toc.ncx", "<n><content src='a'/></n>"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->content()->size(), 1u);
}

TEST_F(EpubInspectionTest, ContentsEntryWithoutATargetIsSkipped)
{
    const auto book
        = inspect(EpubBuilder().member("OEBPS/toc.ncx", "<n><content/><content src='a%20b.html#c%20d'/></n>"));
    ASSERT_TRUE(book);
    ASSERT_EQ(book->content()->size(), 1u);
    EXPECT_EQ(src(book, 0), _folder.path("cache/_books/Book/OEBPS/a b.html#c d"));
}

TEST_F(EpubInspectionTest, ContentsCountFromThePackageFolderAlsoWhereNothingIs)
{
    const auto book
        = inspect(withPackage(packageMember, "<item id='ncx' href='toc/toc.ncx'/>", "")
                      .member("OEBPS/toc/toc.ncx", "<n><content src='a.xhtml#x'/><content src='../b.xhtml'/></n>")
                      .member("OEBPS/toc/a.xhtml", ""));
    ASSERT_TRUE(book);
    ASSERT_EQ(book->content()->size(), 2u);
    EXPECT_EQ(src(book, 0), _folder.path("cache/_books/Book/OEBPS/a.xhtml#x"));
    EXPECT_EQ(src(book, 1), _folder.path("cache/_books/Book/OEBPS/../b.xhtml"));
}

TEST_F(EpubInspectionTest, UnreadablePackageGivesTheDefaults)
{
    const auto book = inspect(EpubBuilder().member(packageMember, "<package><broken"));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->title(), "<not found>");
    EXPECT_EQ(book->author(), "<unknown>");
    EXPECT_EQ(book->isbn(), "<not found>");
    EXPECT_TRUE(book->files().empty());
}

}
