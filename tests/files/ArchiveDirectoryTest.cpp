#include "files/Archive.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/StoredArchive.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using test::StoredArchive;

constexpr std::size_t endBytes = 22;

// Returns the error of opening an archive with these bytes; nullopt if it opens.
std::optional<ArchiveProblem> problemOf(const std::string& bytes, const ArchiveLimits& limits = {})
{
    test::TemporaryFolder folder;
    const auto archive = Archive::open(test::makeFile(folder.path("x.epub"), bytes), limits);
    return archive ? std::nullopt : std::optional(archive.reason());
}

StoredArchive archiveOf(int members)
{
    StoredArchive archive;
    for (int i = 0; i < members; ++i)
        archive.add("member" + std::to_string(i), "x");
    return archive;
}

}

TEST(ArchiveDirectory, ArchiveOfMoreMembersThanThePlainFormNamesOpensWithinItsBounds)
{
    const auto archive = archiveOf(65'537);
    EXPECT_EQ(problemOf(archive.bytes(), { .members = 65'537 }), std::nullopt);
    EXPECT_EQ(problemOf(archive.bytes(), { .members = 65'536 }), ArchiveProblem::PastBounds);
}

TEST(ArchiveDirectory, BytesOfTheDirectoryAreBounded)
{
    const auto archive = archiveOf(10);
    EXPECT_EQ(problemOf(archive.bytes(), { .directoryBytes = archive.directoryBytes() }), std::nullopt);
    EXPECT_EQ(
        problemOf(archive.bytes(), { .directoryBytes = archive.directoryBytes() - 1 }), ArchiveProblem::PastBounds);
}

TEST(ArchiveDirectory, ManyEndsCountTogether)
{
    // Each end record refers to the directory again, so the library would read it again.
    const auto archive = archiveOf(100);
    auto bytes = archive.bytes();
    const auto end = bytes.substr(bytes.size() - endBytes);
    for (int i = 0; i < 9; ++i)
        bytes += end;
    EXPECT_EQ(problemOf(bytes, { .members = 1'000 }), std::nullopt);
    EXPECT_EQ(problemOf(bytes, { .members = 999 }), ArchiveProblem::PastBounds);
    EXPECT_EQ(problemOf(bytes, { .directoryBytes = archive.directoryBytes() * 10 - 1 }), ArchiveProblem::PastBounds);
}

TEST(ArchiveDirectory, EndThatClaimsMoreThanTheFileHoldsIsNoArchive)
{
    auto bytes = archiveOf(1).bytes();
    bytes.replace(bytes.size() - endBytes + 12, 4, "\xFF\xFF\xFF\x7F");
    EXPECT_EQ(problemOf(bytes), ArchiveProblem::Unreadable);
}

TEST(ArchiveDirectory, CutOffEndIsNoArchive)
{
    const auto bytes = archiveOf(1).bytes();
    for (std::size_t kept = bytes.size() - endBytes; kept < bytes.size(); ++kept)
        EXPECT_EQ(problemOf(bytes.substr(0, kept)), ArchiveProblem::Unreadable);
}

TEST(ArchiveDirectory, ArchiveWithinAnArchiveIsAMemberLikeOthers)
{
    EXPECT_EQ(problemOf(StoredArchive().add("inner.zip", archiveOf(3).bytes()).bytes()), std::nullopt);
}

TEST(ArchiveDirectory, NamesThatFallTogetherAreHarmlessWhenTheyAreFew)
{
    StoredArchive archive;
    for (int i = 0; i < 2'048; ++i) {
        std::string name;
        for (int bit = 0; bit < 11; ++bit)
            name += i >> bit & 1 ? "Ab" : "BA";
        archive.add(name);
    }
    EXPECT_EQ(problemOf(archive.bytes()), std::nullopt);
}

}
