#include "files/Archive.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/StoredArchive.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>

namespace pagora {

namespace {

namespace fs = std::filesystem;
using test::contentsOf;
using test::makeFile;
using test::StoredArchive;

// Returns all files, folders and links in a folder, by path, with their attributes. Links are not followed.
std::map<std::string, std::string> everythingBelow(const std::string& folder)
{
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        struct stat info { };
        EXPECT_EQ(::lstat(entry.path().c_str(), &info), 0);
        auto& line = found[entry.path()];
        line = std::to_string(info.st_mode) + " " + std::to_string(info.st_ino);
        if (entry.is_symlink())
            line += " to " + fs::read_symlink(entry.path()).string();
        else if (entry.is_regular_file())
            line += " " + std::to_string(info.st_mtim.tv_sec) + "." + std::to_string(info.st_mtim.tv_nsec) + " "
                + contentsOf(entry.path());
    }
    return found;
}

// A home folder with the user's files and a book's folder. Each test expects that extraction changes nothing outside of
// the book's folder and creates no link or device in it.
class Extraction : public testing::Test {
protected:
    Extraction()
    {
        makeFile(_root.path("home/.bashrc"), "mine");
        makeFile(_root.path("home/Documents/letter"), "mine");
        makeFile(_root.path("home/cache/books/Other/page.xhtml"), "another book");
        fs::create_directories(book());
    }

    std::string book() const { return _root.path("home/cache/books/Book"); }
    std::string inBook(const std::string& name) const { return contentsOf(book() + "/" + name); }

    void extract(const StoredArchive& archive, const std::vector<std::string>& members = {})
    {
        extract(archive.bytes(), members);
    }

    void extract(const std::string& archive, const std::vector<std::string>& members = {})
    {
        const auto path = makeFile(_archives.path("book.epub"), archive);
        const auto outside = outsideOfBook();
        auto opened = Archive::open(path);
        ASSERT_TRUE(opened);
        opened->extract(members, book());
        EXPECT_EQ(outsideOfBook(), outside);
        for (const auto& entry : fs::recursive_directory_iterator(book()))
            EXPECT_TRUE(_own.contains(entry.path()) || entry.symlink_status().type() == fs::file_type::regular
                || entry.symlink_status().type() == fs::file_type::directory)
                << entry.path();
    }

    // Creates a link in the book's folder before the extraction.
    void makeLink(const std::string& name, const std::string& target)
    {
        fs::create_symlink(target, book() + "/" + name);
        _own[book() + "/" + name] = target;
    }

    std::vector<std::string> namesInBook() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(book())) {
            if (!entry.is_directory())
                names.push_back(fs::relative(entry.path(), book()).string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    test::TemporaryFolder _root;

private:
    std::map<std::string, std::string> outsideOfBook() const
    {
        auto all = everythingBelow(_root.path());
        std::erase_if(all, [&](const auto& item) { return item.first.starts_with(book()); });
        return all;
    }

    test::TemporaryFolder _archives;
    std::map<std::string, std::string> _own;
};

using Names = std::vector<std::string>;

}

TEST_F(Extraction, DotDotDoesNotLeaveTheFolder)
{
    extract(StoredArchive()
                .add("../Other/page.xhtml", "x")
                .add("../../../.bashrc", "x")
                .add("a/../../../../Documents/letter", "x")
                .add("a/b/..", "x")
                .add("../", "")
                .add("..", "x")
                .add("./../.", "x"));
    EXPECT_EQ(namesInBook(), (Names { ".bashrc", "Other/page.xhtml", "a/Documents/letter", "a/b" }));
}

TEST_F(Extraction, AbsolutePathsLieBelowTheFolder)
{
    const auto letter = _root.path("home/Documents/letter");
    extract(StoredArchive().add(letter, "x").add("//etc/passwd", "x").add("/", "").add("///", ""));
    EXPECT_EQ(inBook(letter.substr(1)), "x");
    EXPECT_EQ(inBook("etc/passwd"), "x");
}

TEST_F(Extraction, PathsOfOtherSystemsLieBelowTheFolder)
{
    extract(StoredArchive()
                .add("..\\..\\.bashrc", "x")
                .add("C:\\Windows\\win.ini", "x")
                .add("\\\\server\\share\\file", "x")
                .add("C:/boot.ini", "x"));
    EXPECT_EQ(namesInBook().size(), 4u);
}

TEST_F(Extraction, LinksInTheArchiveAreNotMade)
{
    constexpr StoredArchive::Header link { .mode = 0120777 };
    extract(StoredArchive()
                .add("up", "..", link)
                .add("up/Other/page.xhtml", "x")
                .add("letter", _root.path("home/Documents/letter"), link)
                .add("letter", "x")
                .add("folder/", "../../..", link)
                .add("folder/.bashrc", "x"));
    EXPECT_EQ(namesInBook(), (Names { "folder/.bashrc", "letter", "up/Other/page.xhtml" }));
    EXPECT_EQ(inBook("letter"), "x");
}

TEST_F(Extraction, LinksInTheFolderAreNotFollowed)
{
    makeLink("up", "..");
    makeLink("home", _root.path("home"));
    makeLink("letter", _root.path("home/Documents/letter"));
    makeLink("new", _root.path("home/Documents/new"));
    makeLink("loop", "loop");
    extract(StoredArchive()
                .add("up/Other/page.xhtml", "x")
                .add("home/.bashrc", "x")
                .add("home/new/", "")
                .add("letter", "x")
                .add("new", "x")
                .add("loop", "x")
                .add("loop/file", "x"));
    EXPECT_EQ(inBook("letter"), "x");
    EXPECT_EQ(inBook("new"), "x");
    EXPECT_EQ(inBook("loop"), "x");
    EXPECT_FALSE(fs::is_symlink(book() + "/letter"));
    EXPECT_TRUE(fs::is_symlink(book() + "/up"));
}

TEST_F(Extraction, LinkInTheFolderGivesWayToAMemberThatCannotBeRead)
{
    makeLink("letter", _root.path("home/Documents/letter"));
    auto archive = StoredArchive().add("letter", "x").bytes();
    // The directory entry points beyond the end of the file.
    archive.replace(archive.find("PK\1\2") + 42, 4, "\xFF\xFF\xFF\x7F");
    extract(archive);
    EXPECT_FALSE(fs::is_symlink(book() + "/letter"));
    EXPECT_TRUE(namesInBook().empty());
}

TEST_F(Extraction, FilesWithAnotherNameOutsideKeepTheirBytes)
{
    fs::create_hard_link(_root.path("home/Documents/letter"), book() + "/letter");
    extract(StoredArchive().add("letter", "x"));
    EXPECT_EQ(inBook("letter"), "x");
}

TEST_F(Extraction, DevicesAndPipesInTheArchiveAreNotMade)
{
    extract(StoredArchive()
                .add("pipe", "", { .mode = 0010666 })
                .add("character", "", { .mode = 0020666 })
                .add("block", "", { .mode = 0060666 })
                .add("socket", "", { .mode = 0140666 })
                .add("setuid", "x", { .mode = 0106755 }));
    EXPECT_EQ(namesInBook(), (Names { "setuid" }));
    EXPECT_EQ(fs::status(book() + "/setuid").permissions() & fs::perms(07111), fs::perms::none);
}

TEST_F(Extraction, DeviceNamesArePlainFiles)
{
    extract(
        StoredArchive().add("CON", "x").add("nul.txt", "x").add("COM1", "x").add("dev/null", "x").add("/dev/tty", "x"));
    EXPECT_EQ(namesInBook(), (Names { "COM1", "CON", "dev/null", "dev/tty", "nul.txt" }));
}

TEST_F(Extraction, PipeInTheFolderGivesWay)
{
    ASSERT_EQ(::mkfifo((book() + "/page.xhtml").c_str(), 0600), 0);
    extract(StoredArchive().add("page.xhtml", "x"));
    EXPECT_EQ(inBook("page.xhtml"), "x");
}

TEST_F(Extraction, NamesThatDifferOnlyInCaseStayInTheFolder)
{
    makeLink("Link", "..");
    extract(StoredArchive().add("Page", "1").add("page", "2").add("link/Other/page.xhtml", "x").add("LINK", "x"));
    // On file systems that treat them as the same name, the last one is kept.
    EXPECT_EQ(inBook("page"), "2");
}

TEST_F(Extraction, NamesThatDifferOnlyInUnicodeFormStayInTheFolder)
{
    const std::string composed = "\u00E9";
    const std::string decomposed = "e\u0301";
    makeLink(composed, "..");
    extract(StoredArchive()
                .add(decomposed + "/Other/page.xhtml", "x")
                .add(composed + "/Other/page.xhtml", "x")
                // Characters similar to a slash or to two dots are normal characters.
                .add("\u2025\u2215a", "x")
                .add("\uFF0E\uFF0E\uFF0Fb", "x"));
    EXPECT_EQ(inBook("\u2025\u2215a"), "x");
    EXPECT_EQ(inBook("\uFF0E\uFF0E\uFF0Fb"), "x");
}

TEST_F(Extraction, NamesOfOddBytesStayInTheFolder)
{
    using namespace std::string_literals;
    extract(StoredArchive()
                .add("a\0/../../b"s, "x")
                .add("line\nbreak", "x")
                .add(std::string(256, 'n'), "x")
                .add(" /..", "x")
                .add(".. ", "x")
                .add("...", "x")
                .add("%2e%2e/%2e%2e/c", "x")
                .add("", "x"));
    EXPECT_EQ(inBook(".. "), "x");
    EXPECT_EQ(inBook("..."), "x");
}

TEST_F(Extraction, AskingForANameOutsideFindsNothing)
{
    extract(StoredArchive().add("page", "x"), { "../Other/page.xhtml", _root.path("home/.bashrc"), "..", "" });
    EXPECT_TRUE(namesInBook().empty());
}

TEST_F(Extraction, FileInPlaceOfAFolderStays)
{
    extract(StoredArchive().add("a", "A").add("a/b", "B").add("a/", "").add("c/d", "D").add("c", "C"));
    EXPECT_EQ(inBook("a"), "A");
    EXPECT_EQ(inBook("c/d"), "D");
}

}
