#include "files/SpareFiles.hpp"

#include "files/Archive.hpp"
#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>

namespace pagora {

using test::contentsOf;
using test::EpubBuilder;
using test::makeFile;
using Names = std::vector<std::string>;

namespace {

// A scratch folder, and a folder beside it for replaced files.
class Spares : public testing::Test {
protected:
    Spares() { createFolder(_scratch); }

    std::string scratch(const std::string& name) const { return _scratch + "/" + name; }
    Names kept() const { return folderEntries(_folder.path("spare")).value_or(Names {}); }
    FileDescriptor openScratch() const { return FileDescriptor(::open(_scratch.c_str(), O_RDONLY | O_DIRECTORY)); }
    void extract(const EpubBuilder& book)
    {
        auto archive = Archive::open(book.write(_folder.path("book.epub")));
        ASSERT_TRUE(archive);
        archive->extract({}, _scratch, {}, &_spare);
    }

    test::TemporaryFolder _folder;
    const std::string _scratch = _folder.path("scratch");
    SpareFiles _spare { _folder.path("spare") };
};

}

TEST_F(Spares, TheFolderIsEmptyAfterwards)
{
    makeFile(scratch("META-INF/container.xml"), "x");
    makeFile(scratch("mimetype"), "x");
    _spare.makeEmptyFolder(_scratch);
    EXPECT_EQ(folderEntries(_scratch), Names {});
    EXPECT_EQ(kept().size(), 3u);
}

TEST_F(Spares, AFolderIsMadeOfNothingAFileAndALink)
{
    makeFile(_folder.path("file"), "x");
    makeFile(_folder.path("target/in"), "x");
    std::filesystem::create_directory_symlink(_folder.path("target"), _folder.path("link"));
    for (const auto* name : { "new/below", "file", "link" }) {
        _spare.makeEmptyFolder(_folder.path(name));
        EXPECT_EQ(folderEntries(_folder.path(name)), Names {}) << name;
    }
    EXPECT_EQ(contentsOf(_folder.path("target/in")), "x");
}

TEST_F(Spares, AFileIsTakenUnderItsNewName)
{
    makeFile(scratch("cover.jpg"), "a cover");
    _spare.makeEmptyFolder(_scratch);
    const auto folder = openScratch();
    EXPECT_TRUE(_spare.takeFile(folder.get(), "mimetype"));
    EXPECT_EQ(folderEntries(_scratch), Names { "mimetype" });
    EXPECT_EQ(kept(), Names {});
    EXPECT_FALSE(_spare.takeFile(folder.get(), "another"));
}

TEST_F(Spares, NothingIsTakenWhereSomethingHasTheName)
{
    makeFile(scratch("first"), "first");
    _spare.makeEmptyFolder(_scratch);
    makeFile(scratch("mimetype"), "stays");
    EXPECT_FALSE(_spare.takeFile(openScratch().get(), "mimetype"));
    EXPECT_EQ(contentsOf(scratch("mimetype")), "stays");
    EXPECT_EQ(kept().size(), 1u);
}

TEST_F(Spares, AFileWithASecondNameIsNotKept)
{
    makeFile(scratch("cover.jpg"), "a cover");
    std::filesystem::create_hard_link(scratch("cover.jpg"), _folder.path("second"));
    _spare.makeEmptyFolder(_scratch);
    EXPECT_EQ(kept(), Names {});
    EXPECT_EQ(contentsOf(_folder.path("second")), "a cover");
}

TEST_F(Spares, ALinkIsRemovedAndNotFollowed)
{
    makeFile(_folder.path("target/in"), "x");
    std::filesystem::create_directory_symlink(_folder.path("target"), scratch("link"));
    _spare.makeEmptyFolder(_scratch);
    EXPECT_EQ(folderEntries(_scratch), Names {});
    EXPECT_EQ(contentsOf(_folder.path("target/in")), "x");
}

TEST_F(Spares, OnlyAFewAreKept)
{
    for (int i = 0; i < 100; ++i)
        makeFile(scratch(std::to_string(i) + "/file"), "x");
    _spare.makeEmptyFolder(_scratch);
    EXPECT_EQ(folderEntries(_scratch), Names {});
    EXPECT_LT(kept().size(), 20u);
}

TEST_F(Spares, ALargeFileIsNotKept)
{
    makeFile(scratch("large"), "");
    std::filesystem::resize_file(scratch("large"), 64 << 20);
    _spare.makeEmptyFolder(_scratch);
    EXPECT_EQ(folderEntries(_scratch), Names {});
    EXPECT_EQ(kept(), Names {});
}

TEST_F(Spares, WhatWasClearedMeanwhileIsMissedByNobody)
{
    makeFile(scratch("META-INF/container.xml"), "x");
    _spare.makeEmptyFolder(_scratch);
    removeItem(_folder.path("spare"));
    extract(EpubBuilder::empty().member("META-INF/container.xml", "new"));
    EXPECT_EQ(contentsOf(scratch("META-INF/container.xml")), "new");
    _spare.makeEmptyFolder(_scratch);
    EXPECT_EQ(kept().size(), 2u);
}

TEST_F(Spares, AnExtractedFileHoldsNothingOfTheOneBefore)
{
    extract(EpubBuilder::empty().member("OEBPS/content.opf", std::string(100'000, 'x')));
    _spare.makeEmptyFolder(_scratch);
    extract(EpubBuilder::empty().member("text/short", "short"));
    EXPECT_EQ(contentsOf(scratch("text/short")), "short");
    EXPECT_EQ(folderEntries(_scratch), Names { "text" });
    EXPECT_EQ(kept(), Names {});
}

TEST_F(Spares, AnEmptyMemberIsAnEmptyFile)
{
    extract(EpubBuilder::empty().member("before", "some text"));
    _spare.makeEmptyFolder(_scratch);
    extract(EpubBuilder::empty().member("after", ""));
    EXPECT_EQ(std::filesystem::file_size(scratch("after")), 0u);
}

TEST_F(Spares, ExtractionStillReplacesWhatHasTheName)
{
    extract(EpubBuilder::empty().member("one", "a long text"));
    _spare.makeEmptyFolder(_scratch);
    makeFile(scratch("two"), "left there before");
    extract(EpubBuilder::empty().member("two", "new"));
    EXPECT_EQ(contentsOf(scratch("two")), "new");
}

}
