#include "epub/ContentsTargets.hpp"

#include "epub/EpubInspection.hpp"
#include "platform/Files.hpp"
#include "platform/Path.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using test::EpubBuilder;

class Hub : public InspectionHub {
public:
    LibraryFolders layout;

    const LibraryFolders& folders() const override { return layout; }
    void addFaultyBook(const std::string&) override { }
    void set_bookInfo(BookInfoPtr) override { }
    void set_epubPath(const std::string&) override { }
};

class ContentsTargetsTest : public testing::Test {
protected:
    // The target of the only entry of a contents file, as a path in the book.
    std::string target(const std::string& src, EpubBuilder book, const std::string& contentsFile = "toc/toc.ncx")
    {
        Hub hub;
        hub.layout = { _folder.path("library"), _folder.path("cache"), _folder.path("cache/_books"),
            _folder.path("cache/_data") };
        createFolder(hub.layout._dataPath);
        book.member("OEBPS/content.opf",
            "<package><manifest><item id='ncx' href='" + contentsFile
                + "'/><item id='a' href='a.xhtml'/></manifest><spine><itemref idref='a'/></spine></package>");
        book.member(normalizedPath("OEBPS/" + contentsFile), "<n><text>Entry</text><content src='" + src + "'/></n>");
        const auto record = EpubInspection(hub).getBookInfo(book.write(_folder.path("Book.epub")), StopOnErrors::Yes);
        if (!record || record->content()->size() != 1)
            return "no entry";
        return record->content()->at(0).find("src")->string()->substr(record->bookPath()->size() + 1);
    }

    test::TemporaryFolder _folder;
};

}

TEST_F(ContentsTargetsTest, TargetCountsFromThePackageFolder)
{
    EXPECT_EQ(target("a.xhtml#x", EpubBuilder().member("OEBPS/a.xhtml", "")), "OEBPS/a.xhtml#x");
}

TEST_F(ContentsTargetsTest, TargetThatIsOnlyBesideTheContentsFileIsThere)
{
    EXPECT_EQ(target("a.xhtml#x/y", EpubBuilder().member("OEBPS/toc/a.xhtml", "")), "OEBPS/toc/a.xhtml#x/y");
    EXPECT_EQ(target("../text/a.xhtml", EpubBuilder().member("OEBPS/text/a.xhtml", "")), "OEBPS/toc/../text/a.xhtml");
}

TEST_F(ContentsTargetsTest, TargetInBothFoldersIsThePackageFoldersOne)
{
    EXPECT_EQ(
        target("a.xhtml", EpubBuilder().member("OEBPS/a.xhtml", "").member("OEBPS/toc/a.xhtml", "")), "OEBPS/a.xhtml");
}

TEST_F(ContentsTargetsTest, TargetThatIsNowhereStaysAsItIs)
{
    EXPECT_EQ(target("missing.xhtml#x", EpubBuilder()), "OEBPS/missing.xhtml#x");
    EXPECT_EQ(target("#x", EpubBuilder()), "OEBPS/#x");
}

TEST_F(ContentsTargetsTest, FolderIsNoTarget)
{
    EXPECT_EQ(target("text", EpubBuilder().member("OEBPS/toc/text/", "")), "OEBPS/text");
}

TEST_F(ContentsTargetsTest, EscapesAreReplacedBeforeTheTargetIsLookedFor)
{
    EXPECT_EQ(target("../my%20text/a.xhtml#x", EpubBuilder().member("OEBPS/my text/a.xhtml", "")),
        "OEBPS/toc/../my text/a.xhtml#x");
}

TEST_F(ContentsTargetsTest, EitherUnicodeFormOfAMemberIsFound)
{
    EXPECT_EQ(target("\u00E9.xhtml", EpubBuilder().member("OEBPS/toc/e\u0301.xhtml", "")), "OEBPS/toc/\u00E9.xhtml");
    EXPECT_EQ(
        target("e\u0301.xhtml", EpubBuilder().member("OEBPS/\u00E9.xhtml", "").member("OEBPS/toc/e\u0301.xhtml", "")),
        "OEBPS/e\u0301.xhtml");
}

TEST_F(ContentsTargetsTest, ContentsFileAboveThePackageCountsFromItsOwnFolder)
{
    EXPECT_EQ(target("OEBPS/a.xhtml", EpubBuilder().member("OEBPS/a.xhtml", ""), "../toc.ncx"), "OEBPS/a.xhtml");
}

TEST_F(ContentsTargetsTest, TargetOutsideTheBookStaysAsItIs)
{
    EXPECT_EQ(target("../../../a.xhtml", EpubBuilder().member("../a.xhtml", "")), "OEBPS/../../../a.xhtml");
}

}
