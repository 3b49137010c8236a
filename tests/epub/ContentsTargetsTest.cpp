#include "epub/ContentsTargets.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <filesystem>
#include <gtest/gtest.h>

namespace pagora {

namespace {

// An unpacked book whose package document is in OEBPS.
class ContentsTargetsTest : public testing::Test {
protected:
    ContentsTargetsTest() { make("OEBPS/content.opf"); }

    void make(const std::string& file) { test::makeFile(book() + "/" + file, ""); }
    std::string book() const { return _folder.path("Book"); }

    // Returns the resolved target of the only entry, as a path in the book.
    std::string target(const std::string& src)
    {
        const Value::Array content { Value::Dictionary {
            { "src", book() + "/" + src }, { "text", "Entry" }, { "level", 1 } } };
        const auto found = withTargetsFound(content, book());
        return found.at(0).find("src")->string()->substr(book().size() + 1);
    }

    test::TemporaryFolder _folder;
};

}

TEST_F(ContentsTargetsTest, TargetInThePackageFolderStays)
{
    make("OEBPS/toc/toc.ncx");
    make("OEBPS/a.xhtml");
    make("OEBPS/toc/a.xhtml");
    EXPECT_EQ(target("OEBPS/a.xhtml#x"), "OEBPS/a.xhtml#x");
}

TEST_F(ContentsTargetsTest, TargetThatIsOnlyBesideTheContentsFileIsThere)
{
    make("OEBPS/toc/toc.ncx");
    make("OEBPS/toc/a.xhtml");
    make("OEBPS/text/b.xhtml");
    EXPECT_EQ(target("OEBPS/a.xhtml#x/y"), "OEBPS/toc/a.xhtml#x/y");
    EXPECT_EQ(target("OEBPS/../text/b.xhtml"), "OEBPS/toc/../text/b.xhtml");
}

TEST_F(ContentsTargetsTest, TargetThatIsNowhereStays)
{
    make("OEBPS/toc/toc.ncx");
    EXPECT_EQ(target("OEBPS/missing.xhtml#x"), "OEBPS/missing.xhtml#x");
    EXPECT_EQ(target("OEBPS/#x"), "OEBPS/#x");
    EXPECT_EQ(target("OEBPS"), "OEBPS");
}

TEST_F(ContentsTargetsTest, FolderIsNoTarget)
{
    make("OEBPS/toc/toc.ncx");
    make("OEBPS/toc/text/a.xhtml");
    EXPECT_EQ(target("OEBPS/text"), "OEBPS/text");
}

TEST_F(ContentsTargetsTest, EitherUnicodeFormOfAFileIsFound)
{
    make("OEBPS/toc/toc.ncx");
    make("OEBPS/toc/e\u0301.xhtml");
    EXPECT_EQ(target("OEBPS/\u00E9.xhtml"), "OEBPS/toc/\u00E9.xhtml");
}

TEST_F(ContentsTargetsTest, ContentsFileAboveThePackageCountsFromItsOwnFolder)
{
    make("toc.ncx");
    make("text/a.xhtml");
    EXPECT_EQ(target("OEBPS/text/a.xhtml"), "text/a.xhtml");
}

TEST_F(ContentsTargetsTest, TargetOutsideTheBookStays)
{
    make("OEBPS/toc/toc.ncx");
    test::makeFile(_folder.path("a.xhtml"), "");
    EXPECT_EQ(target("OEBPS/../../../a.xhtml"), "OEBPS/../../../a.xhtml");
}

TEST_F(ContentsTargetsTest, LinkToAFileIsNoTarget)
{
    make("OEBPS/toc/toc.ncx");
    std::filesystem::create_symlink("toc.ncx", book() + "/OEBPS/toc/a.xhtml");
    EXPECT_EQ(target("OEBPS/a.xhtml"), "OEBPS/a.xhtml");
}

TEST_F(ContentsTargetsTest, EntryWithoutATargetStays)
{
    EXPECT_EQ(withTargetsFound({ Value::Dictionary {} }, book()).size(), 1u);
}

}
