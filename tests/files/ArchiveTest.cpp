#include "files/Archive.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace pagora {

namespace {

namespace fs = std::filesystem;
using test::contentsOf;
using test::EpubBuilder;
using test::makeFile;
using test::MemberKind;

// An archive, a destination two levels down, and files beside it that must not change.
class ArchiveFolder : public testing::Test {
protected:
    ArchiveFolder() { makeFile(_folder.path("out/canary"), "canary"); }

    void extract(
        const EpubBuilder& builder, const std::vector<std::string>& members = {}, const ArchiveLimits& limits = {})
    {
        auto archive = Archive::open(builder.write(_folder.path("book.epub")), limits);
        ASSERT_TRUE(archive);
        archive->extract(members, destination());
    }

    std::string destination() const { return _folder.path("out/in"); }
    std::string extracted(const std::string& name) const { return contentsOf(destination() + "/" + name); }

    // Returns every file below the destination, sorted.
    std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        if (fs::exists(destination())) {
            for (const auto& entry : fs::recursive_directory_iterator(destination())) {
                if (!entry.is_directory() || entry.is_symlink())
                    names.push_back(fs::relative(entry.path(), destination()).string());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    void TearDown() override
    {
        EXPECT_EQ(contentsOf(_folder.path("out/canary")), "canary");
        EXPECT_LE(std::distance(fs::directory_iterator(_folder.path("out")), {}), 2);
    }

    test::TemporaryFolder _folder;
};

using Names = std::vector<std::string>;

}

TEST_F(ArchiveFolder, OnlyMembersThatExistAreExtracted)
{
    extract(EpubBuilder::empty().member("a", "A").member("x/b", "B"), { "x/b", "nothing" });
    EXPECT_EQ(names(), (Names { "x/b" }));
    EXPECT_EQ(extracted("x/b"), "B");
}

TEST_F(ArchiveFolder, AllMembersAreExtractedUnderTheirFolders)
{
    extract(EpubBuilder::empty().member("a", "A").member("x/y/", "").member("x/b", std::string(600'000, 'b')));
    EXPECT_EQ(names(), (Names { "a", "x/b" }));
    EXPECT_EQ(extracted("x/b").size(), 600'000u);
    EXPECT_TRUE(fs::is_directory(destination() + "/x/y"));
}

TEST_F(ArchiveFolder, ExistingFilesAreOverwritten)
{
    makeFile(destination() + "/a", "older and longer");
    extract(EpubBuilder::empty().member("a", "new"));
    EXPECT_EQ(extracted("a"), "new");
}

TEST_F(ArchiveFolder, WildcardsStandForMembers)
{
    const auto builder
        = EpubBuilder::empty().member("t/a1", "").member("t/a2", "").member("t/b", "").member("t/u/a3", "");
    extract(builder, { "t/a[1-2]" });
    EXPECT_EQ(names(), (Names { "t/a1", "t/a2" }));
    extract(builder, { "*" });
    EXPECT_EQ(names().size(), 4u);
}

TEST_F(ArchiveFolder, MemberWhoseNameHoldsAWildcardIsFoundByIt)
{
    extract(EpubBuilder::empty().member("cover[1].jpg", "x"), { "cover[1].jpg" });
    EXPECT_EQ(names(), (Names { "cover[1].jpg" }));
}

TEST_F(ArchiveFolder, FileThatIsNoArchiveDoesNotOpen)
{
    for (const auto& bytes : { std::string(), std::string("not an archive"), std::string(100'000, 'P') })
        EXPECT_FALSE(Archive::open(makeFile(_folder.path("x.epub"), bytes)));
    EXPECT_FALSE(Archive::open(_folder.path("nothing.epub")));
    EXPECT_FALSE(Archive::open(_folder.path()));
    fs::create_symlink(_folder.path("nothing"), _folder.path("link.epub"));
    EXPECT_FALSE(Archive::open(_folder.path("link.epub")));
}

TEST_F(ArchiveFolder, TruncatedArchiveDoesNotOpen)
{
    const auto path = EpubBuilder().write(_folder.path("x.epub"));
    fs::resize_file(path, fs::file_size(path) / 2);
    EXPECT_FALSE(Archive::open(path));
}

TEST_F(ArchiveFolder, PipeDoesNotOpen)
{
    ASSERT_EQ(mkfifo(_folder.path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(Archive::open(_folder.path("pipe")));
}

TEST_F(ArchiveFolder, DotDotAndLeadingSlashesAreDropped)
{
    const auto outside = _folder.path("out/evil");
    extract(EpubBuilder::empty()
                .member("../evil", "1")
                .member(outside, "2")
                .member("a/../../../evil2", "3")
                .member("/", ""));
    EXPECT_FALSE(fs::exists(outside));
    EXPECT_EQ(extracted("evil"), "1");
    EXPECT_EQ(extracted("a/evil2"), "3");
    EXPECT_EQ(extracted(outside.substr(1)), "2");
}

TEST_F(ArchiveFolder, LinksAreNotMade)
{
    extract(EpubBuilder::empty().member("link", "..", MemberKind::Link).member("link/evil", "x").member("a", "A"));
    EXPECT_EQ(names(), (Names { "a", "link/evil" }));
    EXPECT_FALSE(fs::exists(_folder.path("out/evil")));
}

TEST_F(ArchiveFolder, LinksInTheDestinationAreNotFollowed)
{
    fs::create_directories(destination());
    fs::create_symlink("..", destination() + "/folder");
    fs::create_symlink("../canary", destination() + "/file");
    extract(EpubBuilder::empty().member("folder/evil", "x").member("file", "new"));
    EXPECT_FALSE(fs::exists(_folder.path("out/evil")));
    EXPECT_FALSE(fs::is_symlink(destination() + "/file"));
    EXPECT_EQ(extracted("file"), "new");
}

TEST_F(ArchiveFolder, OtherNamesOfAReplacedFileKeepTheirBytes)
{
    fs::create_directories(destination());
    fs::create_hard_link(_folder.path("out/canary"), destination() + "/file");
    extract(EpubBuilder::empty().member("file", "new"));
    EXPECT_EQ(extracted("file"), "new");
}

TEST_F(ArchiveFolder, LastOfTwoMembersOfANameStays)
{
    extract(EpubBuilder::empty().member("text", "first").anotherMember("text", "last"));
    EXPECT_EQ(extracted("text"), "last");
}

TEST_F(ArchiveFolder, EncryptedMembersArePassedOver)
{
    extract(EpubBuilder::empty().member("secret", "x", MemberKind::Encrypted).member("open", "y"));
    EXPECT_EQ(names(), (Names { "open" }));
}

TEST_F(ArchiveFolder, NamesKeepTheirUnicodeForm)
{
    const std::string composed = "\u00E9.txt";
    const std::string decomposed = "e\u0301.txt";
    extract(EpubBuilder::empty().member(composed, "c").member(decomposed, "d"));
    EXPECT_EQ(extracted(composed), "c");
    EXPECT_EQ(extracted(decomposed), "d");
}

TEST_F(ArchiveFolder, NameThatIsNotUtf8IsReadAsCodePage437)
{
    extract(EpubBuilder::empty().member("caf\x82.txt", "x", MemberKind::NameNotUtf8));
    EXPECT_EQ(names(), (Names { "caf\u00E9.txt" }));
}

TEST_F(ArchiveFolder, Utf8NameWithoutItsFlagIsUtf8)
{
    extract(EpubBuilder::empty().anotherMember("\u65E5\u672C.txt", "x"));
    EXPECT_EQ(names(), (Names { "\u65E5\u672C.txt" }));
}

TEST_F(ArchiveFolder, FilesHavePlainModes)
{
    const auto before = umask(022);
    extract(EpubBuilder::empty().member("x/a", "A"));
    umask(before);
    EXPECT_EQ(fs::status(destination() + "/x/a").permissions(), fs::perms(0644));
    EXPECT_EQ(fs::status(destination() + "/x").permissions(), fs::perms(0755));
}

TEST_F(ArchiveFolder, MemberWhoseFolderIsAFileIsLeftOut)
{
    extract(EpubBuilder::empty().member("a", "A").member("a/b", "B").member("c", "C"));
    EXPECT_EQ(names(), (Names { "a", "c" }));
}

TEST_F(ArchiveFolder, NameThatIsTooLongForTheSystemIsLeftOut)
{
    extract(EpubBuilder::empty().member(std::string(300, 'n'), "x").member("a", "A"));
    EXPECT_EQ(names(), (Names { "a" }));
}

TEST_F(ArchiveFolder, MemberWithAWrongCheckSumKeepsItsBytes)
{
    const auto path
        = EpubBuilder::empty().member("bad", "0123456789abcdef").member("good", "x").write(_folder.path("x.epub"));
    test::replaceInFile(path, "0123456789abcdef", "0123456789ABCDEF");
    auto archive = Archive::open(path);
    ASSERT_TRUE(archive);
    archive->extract({}, destination());
    EXPECT_EQ(names(), (Names { "bad", "good" }));
    EXPECT_EQ(extracted("bad"), "0123456789ABCDEF");
    EXPECT_EQ(archive->read("bad", 100), "0123456789ABCDEF");
}

TEST_F(ArchiveFolder, MemberWithDamagedBytesKeepsThoseBefore)
{
    std::string text;
    for (int i = 0; i < 20'000; ++i)
        text += std::to_string(i * 7'919 % 20'011) + ' ';
    const auto path = EpubBuilder::empty().member("bad", text).member("good", "x").write(_folder.path("x.epub"));
    auto bytes = contentsOf(path);
    // This makes a deflate block of an invalid type.
    bytes.replace(bytes.size() / 2, 100, 100, '\xFF');
    auto archive = Archive::open(makeFile(path, bytes));
    ASSERT_TRUE(archive);
    archive->extract({}, destination());
    EXPECT_EQ(names(), (Names { "bad", "good" }));
    EXPECT_TRUE(extracted("bad").starts_with(text.substr(0, 10'000)));
    EXPECT_LE(extracted("bad").size(), text.size());
}

TEST_F(ArchiveFolder, MemberGetsNoMoreBytesThanTheDirectorySays)
{
    constexpr std::size_t size = 5'000'000;
    const auto path = EpubBuilder::empty()
                          .member("liar", std::string(size, '\0'))
                          .member("good", "x")
                          .write(_folder.path("x.epub"));
    // The size in both headers.
    test::replaceInFile(path, std::string("\x40\x4B\x4C\0", 4), std::string("\x10\0\0\0", 4));
    auto archive = Archive::open(path);
    ASSERT_TRUE(archive);
    archive->extract({}, destination());
    EXPECT_EQ(extracted("liar"), std::string(16, '\0'));
    EXPECT_EQ(extracted("good"), "x");
}

TEST_F(ArchiveFolder, ArchivePastABoundDoesNotOpen)
{
    const auto path = EpubBuilder::empty()
                          .member("a/b/c", std::string(2'000'000, 'x'))
                          .member("d", std::string(1'000'000, 'y'))
                          .write(_folder.path("x.epub"));
    const auto isPast = [&](const ArchiveLimits& limits) {
        const auto archive = Archive::open(path, limits);
        return !archive && archive.reason() == ArchiveProblem::PastBounds;
    };
    EXPECT_TRUE(isPast({ .members = 1 }));
    EXPECT_TRUE(isPast({ .memberBytes = 1'999'999 }));
    EXPECT_TRUE(isPast({ .totalBytes = 2'999'999 }));
    EXPECT_TRUE(isPast({ .ratio = 100, .freeBytes = 1'000'000 }));
    EXPECT_TRUE(isPast({ .pathBytes = 4 }));
    EXPECT_TRUE(isPast({ .depth = 2 }));
    EXPECT_FALSE(
        isPast({ .members = 2, .memberBytes = 2'000'000, .totalBytes = 3'000'000, .pathBytes = 5, .depth = 3 }));
}

TEST_F(ArchiveFolder, StoppedExtractionLeavesNothingHalf)
{
    auto archive = Archive::open(EpubBuilder().write(_folder.path("x.epub")));
    ASSERT_TRUE(archive);
    std::stop_source stop;
    stop.request_stop();
    archive->extract({}, destination(), stop.get_token());
    EXPECT_TRUE(names().empty());
}

}
