#include "base/LittleEndian.hpp"
#include "files/Archive.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/StoredArchive.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <spawn.h>
#include <sys/wait.h>

namespace pagora {

namespace {

namespace fs = std::filesystem;
using test::EpubBuilder;
using test::StoredArchive;
using Names = std::vector<std::string>;
// All files in a folder with their bytes.
using Tree = std::map<std::string, std::string>;

// An archive and the names of the members to extract. docs/archives.md gives the reason for each accepted difference
// under the case's name.
struct Case {
    std::string name;
    std::string bytes;
    Names asked = {};
    bool isKeptDifference = false;
};

constexpr bool keptDifference = true;

std::string bytesOf(const EpubBuilder& builder)
{
    const test::TemporaryFolder folder;
    return test::contentsOf(builder.write(folder.path("x.zip")));
}

// Returns three compressed members, large enough to be damaged.
std::string packed()
{
    std::string text;
    for (unsigned i = 0, number = 1; i < 60'000; ++i, number = number * 1'103'515'245 + 12'345)
        text += static_cast<char>('a' + (number >> 16) % 26);
    return bytesOf(EpubBuilder::empty()
                       .member("mimetype", "application/epub+zip")
                       .member("x/text", text)
                       .member("last", std::string(2'000, 'l')));
}

std::size_t endOf(const std::string& bytes)
{
    return bytes.rfind("PK\5\6");
}

std::string withEnd(std::string bytes, std::size_t at, std::uint64_t number, int size)
{
    putLittleEndian(bytes, endOf(bytes) + at, number, size);
    return bytes;
}

std::string withCount(std::string bytes, std::uint64_t count)
{
    return withEnd(withEnd(std::move(bytes), 8, count, 2), 10, count, 2);
}

std::string withOffset(std::string bytes, int by)
{
    const auto offset = littleEndian(bytes, endOf(bytes) + 16, 4);
    return withEnd(std::move(bytes), 16, offset + static_cast<std::uint64_t>(by), 4);
}

std::string withDirectorySize(std::string bytes, int by)
{
    const auto size = littleEndian(bytes, endOf(bytes) + 12, 4);
    return withEnd(std::move(bytes), 12, size + static_cast<std::uint64_t>(by), 4);
}

// Returns the offset of a directory entry.
std::size_t entryOf(const std::string& bytes, int number)
{
    auto at = static_cast<std::size_t>(littleEndian(bytes, endOf(bytes) + 16, 4));
    for (; number > 0; --number)
        at += 46 + littleEndian(bytes, at + 28, 2) + littleEndian(bytes, at + 30, 2) + littleEndian(bytes, at + 32, 2);
    return at;
}

std::string withEntry(std::string bytes, int number, std::size_t at, std::uint64_t value, int size)
{
    putLittleEndian(bytes, entryOf(bytes, number) + at, value, size);
    return bytes;
}

// Replaces the extra field of a directory entry.
std::string withExtra(std::string bytes, int number, const std::string& extra)
{
    const auto entry = entryOf(bytes, number);
    const auto nameEnd = entry + 46 + littleEndian(bytes, entry + 28, 2);
    const auto before = littleEndian(bytes, entry + 30, 2);
    bytes.replace(nameEnd, before, extra);
    putLittleEndian(bytes, entry + 30, extra.size(), 2);
    return withDirectorySize(std::move(bytes), static_cast<int>(extra.size()) - static_cast<int>(before));
}

// Returns a field whose declared size is too large.
std::string longField()
{
    return { "\x55\x54\xF4\x01"
             "ab",
        6 };
}

std::size_t packedBytesOf(const std::string& bytes, int number)
{
    const auto header = static_cast<std::size_t>(littleEndian(bytes, entryOf(bytes, number) + 42, 4));
    return header + 30 + littleEndian(bytes, header + 26, 2) + littleEndian(bytes, header + 28, 2);
}

// Damages the compressed bytes of a member at this fraction of their length.
std::string broken(std::string bytes, int number, double part, std::size_t count = 30)
{
    const auto size = littleEndian(bytes, entryOf(bytes, number) + 20, 4);
    const auto at = packedBytesOf(bytes, number) + static_cast<std::size_t>(static_cast<double>(size) * part);
    bytes.replace(at, count, count, '\xFF');
    return bytes;
}

std::string withWrongSum(std::string bytes, int number)
{
    const auto header = static_cast<std::size_t>(littleEndian(bytes, entryOf(bytes, number) + 42, 4));
    putLittleEndian(bytes, header + 14, 0x12345678, 4);
    return withEntry(std::move(bytes), number, 16, 0x12345678, 4);
}

std::string stored(const Names& names)
{
    StoredArchive archive;
    for (const auto& name : names)
        archive.add(name, "bytes of " + name);
    return archive.bytes();
}

Case oddName(const std::string& what, const std::string& name, bool isKept = false)
{
    return { "name: " + what, stored({ "first", name, "last" }), {}, isKept };
}

Case pattern(const std::string& asked, const Names& names, bool isKept = false)
{
    return { "asked: " + asked, stored(names), { asked }, isKept };
}

std::vector<Case> damages()
{
    const auto plain = packed();
    const auto odd = std::string("\1\2\3", 3);
    return {
        { "whole archive", plain },
        { "a member of a folder", plain, { "x/text" } },
        { "a member that is not there", plain, { "nothing", "last" } },
        { "no archive", std::string(5'000, 'n') },
        { "empty file", "" },
        { "100 bytes before the archive", std::string(100, 'b') + plain },
        { "100 kB before the archive", std::string(100'000, 'b') + plain },
        { "bytes before the archive, counted in its places", withOffset("b" + plain, 1), {}, keptDifference },
        { "500 bytes after the archive", plain + std::string(500, 'a') },
        { "69 kB after the archive", plain + std::string(69'000, 'a') },
        { "long comment", withEnd(plain, 20, 60'000, 2) + std::string(60'000, 'c') },
        { "comment that ends early", withEnd(plain, 20, 60'000, 2) },
        { "count of entries too small", withCount(plain, 1) },
        { "count of entries too large", withCount(plain, 9) },
        { "count of no entries", withCount(plain, 0) },
        { "two counts that differ", withEnd(plain, 10, 7, 2) },
        { "directory said to begin early", withOffset(plain, -7) },
        { "directory said to begin late", withOffset(plain, 7) },
        { "directory said to be short", withDirectorySize(plain, -5) },
        { "directory said to be long", withDirectorySize(plain, 5) },
        { "extra field that is too long", withExtra(plain, 1, longField()) },
        { "extra field that is too short", withExtra(plain, 1, odd) },
        { "extra field after a good one that is too long",
            withExtra(plain, 1, std::string("\x99\x99\x02\0zz", 6) + longField()) },
        { "damaged second entry of the directory", withEntry(plain, 1, 0, 'Q', 1) },
        { "wrong check sum", withWrongSum(plain, 1) },
        { "damage in the middle of a member", broken(plain, 1, 0.5), {}, keptDifference },
        { "damage at the start of a member", broken(plain, 1, 0) },
        { "damage in the only bytes of a member", broken(plain, 2, 0.3, 4), {}, keptDifference },
        { "unknown method", withEntry(withEntry(plain, 1, 10, 98, 2), 1, 8, 0, 2) },
        { "method of encryption without its field", withEntry(plain, 1, 10, 99, 2) },
        { "size in the directory too small", withEntry(plain, 1, 24, 100, 4), {}, keptDifference },
        { "size in the directory too large", withEntry(plain, 1, 24, 70'000, 4) },
        { "packed size in the directory too small", withEntry(plain, 1, 20, 20'000, 4), {}, keptDifference },
        { "place of a member that holds none", withEntry(plain, 1, 42, 3, 4), {}, keptDifference },
        { "cut off in the middle", plain.substr(0, plain.size() / 2) },
        { "cut off in the end record", plain.substr(0, plain.size() - 4) },
        { "two members of one name", bytesOf(EpubBuilder::empty().member("a", "one").anotherMember("a", "two")) },
        { "more members than the plain form counts",
            [] {
                StoredArchive archive;
                for (int i = 0; i < 300; ++i)
                    archive.add("member" + std::to_string(i), "x");
                return archive.bytes();
            }() },
    };
}

std::vector<Case> oddNames()
{
    return {
        oddName("steps up", "../up"),
        oddName("steps up in the middle", "a/../../b/../c"),
        oddName("from the root", "/root/file"),
        oddName("two slashes at the start", "//server/file"),
        oddName("two slashes in the middle", "a//b"),
        oddName("a step that stays", "./a/./b"),
        oddName("only dots", "..."),
        oddName("a space at the ends", " a "),
        oddName("a backslash", "a\\b"),
        oddName("a colon", "c:file"),
        oddName("a semicolon and a number", "file;1", keptDifference),
        oddName("a semicolon and a word", "file;word"),
        oddName("a line break", "a\nb", keptDifference),
        oddName("a tab", "a\tb", keptDifference),
        oddName("an escape", "a\x1B[31mb", keptDifference),
        oddName("DEL",
            "a\x7F"
            "b",
            keptDifference),
        oddName("letters with accents", "\u00E9\u00DF.xhtml"),
        oddName("letters of other scripts", "\u65E5\u672C/\u8A9E.xhtml"),
        oddName("separate accents", "e\u0301.xhtml"),
        oddName("an emoji", "\U0001F4D6.xhtml"),
        oddName("a minus at the start", "-o"),
        oddName("wildcards", "a*b?c[d]"),
        oddName("a percent escape", "a%20b"),
        oddName("a quote", "a'b\"c"),
        oddName("an empty folder", "folder/"),
        oddName("250 bytes", std::string(250, 'n')),
        oddName("300 bytes", std::string(300, 'n')),
        oddName("the first member once more, in capitals", "FIRST"),
    };
}

std::vector<Case> patterns()
{
    const Names names { "a1", "a2", "b", "t/a1", "t/u/a3", "A1", "cover1.jpg", "cover[1].jpg", "x]y", "x-y", "xby" };
    return {
        pattern("*", names),
        pattern("a?", names),
        pattern("a*", names),
        pattern("t/*", names),
        pattern("*a3", names),
        pattern("**", names),
        pattern("a[12]", names),
        pattern("a[1-2]", names),
        pattern("a[!1]", names),
        pattern("a[^1]", names),
        pattern("x[]]y", names),
        pattern("x[-]y", names),
        pattern("x[a-c]y", names),
        pattern("x[c-a]y", names),
        pattern("a[1", names),
        pattern("cover[1].jpg", names, keptDifference),
        pattern("cover\\[1\\].jpg", names),
        pattern("x[\\]]y", names),
        pattern("a\\1", names),
        pattern("t", names),
        pattern("t/", names),
        pattern("", names),
        pattern("A?", names),
        pattern("?", names),
        pattern("../a1", names),
        pattern("/a1", names),
        pattern("t//a1", names),
    };
}

void runUnzip(const std::string& archive, const Names& asked, const std::string& destination)
{
    Names arguments { "unzip", "-o", archive };
    arguments.insert(arguments.end(), asked.begin(), asked.end());
    arguments.insert(arguments.end(), { "-d", destination });
    std::vector<char*> pointers;
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    // unzip prints and writes names as UTF-8.
    char locale[] = "LC_ALL=C.UTF-8";
    char* environment[] = { locale, nullptr };
    posix_spawn_file_actions_t files;
    ASSERT_EQ(::posix_spawn_file_actions_init(&files), 0);
    for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
        ::posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
    pid_t process = 0;
    const auto started = ::posix_spawn(&process, "/usr/bin/unzip", &files, nullptr, pointers.data(), environment);
    ::posix_spawn_file_actions_destroy(&files);
    ASSERT_EQ(started, 0) << "unzip is named in scripts/packages.txt";
    int status = 0;
    ASSERT_EQ(::waitpid(process, &status, 0), process);
}

Tree treeOf(const std::string& folder)
{
    Tree tree;
    if (!fs::exists(folder))
        return tree;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_directory())
            tree[fs::relative(entry.path(), folder).string()] = test::contentsOf(entry.path());
    }
    return tree;
}

std::string described(const Tree& tree)
{
    std::string text;
    for (const auto& [name, bytes] : tree)
        text += testing::PrintToString(name) + " (" + std::to_string(bytes.size()) + ") ";
    return text;
}

void compare(const std::vector<Case>& cases)
{
    const auto reasons = test::contentsOf(PAGORA_SOURCE_FOLDER "/docs/archives.md");
    for (const auto& each : cases) {
        const test::TemporaryFolder folder;
        const auto path = test::makeFile(folder.path("book.epub"), each.bytes);
        fs::create_directory(folder.path("theirs"));
        runUnzip(path, each.asked, folder.path("theirs/out"));
        if (auto archive = Archive::open(path))
            archive->extract(each.asked, folder.path("ours/out"));
        const auto theirs = treeOf(folder.path("theirs"));
        const auto ours = treeOf(folder.path("ours"));
        EXPECT_EQ(ours != theirs, each.isKeptDifference)
            << each.name << "\n  ours:   " << described(ours) << "\n  theirs: " << described(theirs);
        const auto row = "| " + test::replaced(each.name, "|", "\\|") + " |";
        EXPECT_EQ(reasons.find(row) != std::string::npos, each.isKeptDifference) << each.name;
    }
}

}

TEST(UnzipComparison, DamagedArchivesGiveTheSameFiles)
{
    compare(damages());
}

TEST(UnzipComparison, OddNamesGiveTheSameFiles)
{
    compare(oddNames());
}

TEST(UnzipComparison, WildcardsAskForTheSameFiles)
{
    compare(patterns());
}

}
