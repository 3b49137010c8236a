#include "epub/InspectionProcess.hpp"

#include "base/Bounds.hpp"
#include "base/Log.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/FakeInspectionHub.hpp"
#include "tests/support/StoredArchive.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>

namespace pagora {

namespace {

namespace fs = std::filesystem;
using test::EpubBuilder;
using Lines = std::vector<std::string>;

const Lines tooLarge { "Book.epub --> epub is too large to be opened safely" };

class InspectionProcessTest : public testing::Test {
protected:
    BookInfoPtr inspect(const std::string& path)
    {
        _hub.faultyBooks.clear();
        _process.emptyScratch();
        return _process.getBookInfo(path, StopOnErrors::Yes);
    }
    BookInfoPtr inspect(const EpubBuilder& builder) { return inspect(builder.write(_folder.path("Book.epub"))); }
    // Expects that the book is rejected with one line and that another one is imported after it.
    void expectRefused(const EpubBuilder& builder)
    {
        EXPECT_FALSE(inspect(builder));
        EXPECT_EQ(_hub.faultyBooks, tooLarge);
        EXPECT_TRUE(inspect(EpubBuilder()));
    }
    // Expects that the process rejects a slow book.
    void expectTooLarge(InspectionProcess& process);

    test::TemporaryFolder _folder;
    test::FakeInspectionHub _hub { _folder.path() };
    // True if the program ends as soon as the process runs.
    bool _endsWithStart = false;
    bool _isEnded = false;
    InspectionProcess _process { _hub, [this] {
                                    _isEnded = _isEnded || (_endsWithStart && _process.process() != 0);
                                    return _isEnded;
                                } };
};

// Returns elements with the maximum number of attributes. The parser's time is quadratic in their number.
std::string manyAttributes(int elements)
{
    std::string element = "<e";
    for (std::size_t i = 0; i < XmlLimits().attributes - 10; ++i)
        element += " a" + std::to_string(i) + "=''";
    element += "/>";
    std::string document = "<ncx>";
    for (int i = 0; i < elements; ++i)
        document += element;
    return document + "</ncx>";
}

void InspectionProcessTest::expectTooLarge(InspectionProcess& process)
{
    process.emptyScratch();
    const auto path = EpubBuilder().member("OEBPS/toc.ncx", manyAttributes(2'000)).write(_folder.path("Book.epub"));
    EXPECT_FALSE(process.getBookInfo(path, StopOnErrors::Yes));
    EXPECT_EQ(_hub.faultyBooks, tooLarge);
}

}

TEST_F(InspectionProcessTest, GivesTheRecordOfAnInspection)
{
    const auto path = EpubBuilder().fixedLayout(700, 900).write(_folder.path("Book.epub"));
    const auto book = inspect(path);
    ASSERT_TRUE(book);
    EXPECT_EQ(_hub._bookInfo, book);
    const auto epubPath = _hub._epubPath;
    const auto here = EpubInspection(_hub).getBookInfo(path, StopOnErrors::Yes);
    ASSERT_TRUE(here);
    EXPECT_EQ(entryFromBook(*book), entryFromBook(*here));
    EXPECT_EQ(epubPath, _hub._epubPath);
}

TEST_F(InspectionProcessTest, TellsWhyABookIsRejected)
{
    EXPECT_FALSE(inspect(EpubBuilder().member("META-INF/encryption.xml", "")));
    EXPECT_EQ(_hub.faultyBooks, Lines { "Book.epub --> epub is crypted by DRM" });
    EXPECT_FALSE(inspect(_folder.path("missing.epub")));
    EXPECT_EQ(_hub.faultyBooks, Lines { "missing.epub --> epub is corrupted (mimetype not identified)" });
}

TEST_F(InspectionProcessTest, BookOfAnotherTypeIsToldWhereProblemsDoNotStop)
{
    const auto path = EpubBuilder().member("mimetype", "application/x-ibooks+zip").write(_folder.path("Book.epub"));
    _process.emptyScratch();
    const auto book = _process.getBookInfo(path, StopOnErrors::No);
    const auto here = EpubInspection(_hub).getBookInfo(path, StopOnErrors::No);
    ASSERT_TRUE(here);
    ASSERT_TRUE(book);
    EXPECT_EQ(book->type(), here->type());
    EXPECT_EQ(_hub.faultyBooks.size(), 2u);
    EXPECT_EQ(_hub.faultyBooks.front(), _hub.faultyBooks.back());
}

TEST_F(InspectionProcessTest, RejectedBookKeepsItsRecord)
{
    EXPECT_FALSE(inspect(EpubBuilder().fixedLayout(700, 900).without("OEBPS/chapter3.xhtml")));
    ASSERT_TRUE(_hub._bookInfo);
    EXPECT_EQ(_hub._bookInfo->type(), "fixed");
}

TEST_F(InspectionProcessTest, Logs)
{
    Lines lines;
    const LogCapture capture([&](const std::string& line) { lines.push_back(line); });
    inspect(EpubBuilder());
    EXPECT_EQ(lines,
        (Lines { "Book filePath: " + _folder.path("cache/_books/Book/OEBPS"), "subfolder - OEBPS",
            "cover file - OEBPS/images/cover.jpg" }));
}

TEST_F(InspectionProcessTest, LeavesTheMembersInTheScratchFolderUntilItIsEmptied)
{
    inspect(EpubBuilder());
    EXPECT_TRUE(fileExists(_folder.path("cache/_data/OEBPS/toc.ncx")));
    _process.emptyScratch();
    EXPECT_EQ(folderEntries(_folder.path("cache/_data")), Lines {});
}

TEST_F(InspectionProcessTest, FileFromBeforeCounts)
{
    test::makeFile(_folder.path("cache/_data/META-INF/encryption.xml"), "");
    EXPECT_FALSE(_process.getBookInfo(EpubBuilder().write(_folder.path("Book.epub")), StopOnErrors::Yes));
    EXPECT_EQ(_hub.faultyBooks, Lines { "Book.epub --> epub is crypted by DRM" });
}

TEST_F(InspectionProcessTest, ManyBooksShareOneProcess)
{
    inspect(EpubBuilder());
    const auto process = _process.process();
    inspect(EpubBuilder().title("Other"));
    EXPECT_EQ(_process.process(), process);
    EXPECT_GT(process, 0);
}

TEST_F(InspectionProcessTest, ScratchFolderMayBeMadeAnew)
{
    inspect(EpubBuilder());
    fs::remove_all(_folder.path("cache"));
    EXPECT_TRUE(inspect(EpubBuilder()));
}

TEST_F(InspectionProcessTest, ProcessThatWentAwayIsStartedAnew)
{
    inspect(EpubBuilder());
    ASSERT_EQ(::kill(_process.process(), SIGKILL), 0);
    EXPECT_TRUE(inspect(EpubBuilder()));
}

TEST_F(InspectionProcessTest, EachBookSaysSoWhereTheProgramCannotBeStarted)
{
    InspectionProcess none(
        _hub, [] { return false; }, {}, "pagora-none");
    const auto path = EpubBuilder().write(_folder.path("Book.epub"));
    test::makeFile(_folder.path("cache/_data/left"), "");
    none.emptyScratch();
    EXPECT_EQ(folderEntries(_folder.path("cache/_data")), Lines {});
    for (int i = 0; i < 2; ++i)
        EXPECT_FALSE(none.getBookInfo(path, StopOnErrors::Yes));
    EXPECT_EQ(_hub.faultyBooks,
        Lines(2, "Book.epub --> epub can not be read (the program that inspects books can not be started)"));
}

TEST_F(InspectionProcessTest, BookThatTakesTooMuchTimeIsRefused)
{
    InspectionLimits limits;
    limits.processorSeconds = 0;
    InspectionProcess quick(
        _hub, [] { return false; }, limits);
    expectTooLarge(quick);
    EXPECT_EQ(quick.process(), 0);
}

TEST_F(InspectionProcessTest, InspectionThatTakesTooLongIsRefused)
{
    InspectionLimits limits;
    limits.seconds = 0;
    InspectionProcess quick(
        _hub, [] { return false; }, limits);
    expectTooLarge(quick);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// Sanitizers reserve far more memory than they use, so they have no limit.
TEST_F(InspectionProcessTest, BookThatTakesTooMuchMemoryIsRefused)
{
    // Each part between commas is a string.
    expectRefused(EpubBuilder().fixedLayout(600, 800).member(
        "OEBPS/chapter3.xhtml", "<html><meta name='viewport' content='" + std::string(10'000'000, ',') + "'/></html>"));
}
#endif

TEST_F(InspectionProcessTest, BookThatTakesTooMuchDiskIsRefused)
{
    // Incompressible bytes, which keep the archive below the compression limit.
    std::string noise;
    for (std::uint32_t i = 0, number = 1; i < 2'000'000; ++i, number = number * 1'664'525 + 1'013'904'223)
        noise += static_cast<char>(number >> 24);
    auto builder = EpubBuilder().member("noise", noise);
    builder.member("OEBPS/content.opf",
        "<package><manifest><item id='ncx' href='zeros*'/></manifest><spine toc='ncx'/></package>");
    for (int i = 0; i < 9; ++i)
        builder.member("OEBPS/zeros" + std::to_string(i), std::string(30'000'000, '\0'));
    expectRefused(builder);
}

TEST_F(InspectionProcessTest, EntryLargerThanItMayBeIsRefused)
{
    std::string items;
    std::string references;
    const std::string longName(3'000, 'n');
    for (int i = 0; i < 400; ++i) {
        const auto id = "i" + std::to_string(i);
        items += "<item id='" + id + "' href='" + longName + id + "'/>";
        references += "<itemref idref='" + id + "'/>";
    }
    expectRefused(EpubBuilder().member(
        "OEBPS/content.opf", "<package><manifest>" + items + "</manifest><spine>" + references + "</spine></package>"));
}

TEST_F(InspectionProcessTest, InspectionEndsWithTheProgramAndWithoutALine)
{
    const auto path = EpubBuilder().member("OEBPS/toc.ncx", manyAttributes(2'000)).write(_folder.path("Book.epub"));
    _endsWithStart = true;
    EXPECT_FALSE(_process.getBookInfo(path, StopOnErrors::Yes));
    EXPECT_TRUE(_isEnded);
    EXPECT_EQ(_hub.faultyBooks, Lines {});
}

TEST_F(InspectionProcessTest, CoverIsScaledAhead)
{
    CoverProcess covers([] { return false; });
    const auto path = EpubBuilder().cover(600, 800).write(_folder.path("Book.epub"));
    const auto ahead = covers.prefetchCover(path);
    ASSERT_TRUE(ahead && ahead->picture);
    const auto book = _process.getBookInfo(path, StopOnErrors::Yes, &*ahead);
    ASSERT_TRUE(book);
    EXPECT_EQ(book->imgData(), ahead->picture);
}

TEST_F(InspectionProcessTest, CoverOfAnotherBookDoesNotCount)
{
    CoverProcess covers([] { return false; });
    const auto ahead = covers.prefetchCover(EpubBuilder().cover(600, 800).write(_folder.path("Other.epub")));
    ASSERT_TRUE(ahead);
    const auto book = _process.getBookInfo(
        EpubBuilder().cover(1'000, 1'000).write(_folder.path("Book.epub")), StopOnErrors::Yes, &*ahead);
    ASSERT_TRUE(book);
    EXPECT_EQ(book->cover()->size(), (Size { 106, 106 }));
}

TEST_F(InspectionProcessTest, LargestCoverComesIn)
{
    static_assert(PictureLimits().pixels == 6'000 * 4'000);
    const auto book = inspect(EpubBuilder().member("OEBPS/images/cover.jpg", test::picture(6'000, 4'000, "png", 128)));
    ASSERT_TRUE(book);
    EXPECT_EQ(book->cover()->size(), (Size { 105, 70 }));
}

TEST_F(InspectionProcessTest, CoverInSvgComesIn)
{
    const auto book = inspect(EpubBuilder().member("OEBPS/images/cover.jpg",
        "<svg xmlns='http://www.w3.org/2000/svg' width='60' height='80'><rect width='60' height='80'/></svg>"));
    ASSERT_TRUE(book);
    ASSERT_TRUE(book->cover());
    EXPECT_EQ(book->cover()->size(), (Size { 106, 141 }));
}

}
