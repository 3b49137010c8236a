#include "running/Worker.hpp"
#include "tests/app/Program.hpp"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pagora {

using test::EpubBuilder;
using Names = std::vector<std::string>;

namespace {

constexpr const char* tooLarge = "Hostile.epub --> epub is too large to be opened safely";

std::string repeated(int count, const std::string& text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

// Returns a book whose table of contents takes minutes of processor time: its elements have the maximum number of
// attributes.
EpubBuilder slowBook()
{
    std::string element = "<e";
    for (int i = 0; i < 999; ++i)
        element += " a" + std::to_string(i) + "=''";
    return EpubBuilder().member("OEBPS/toc.ncx", "<ncx>" + repeated(3'500, element + "/>") + "</ncx>");
}

struct HostileImport : testing::Test {
    std::string hostile(const EpubBuilder& book) const { return program.download("Hostile.epub", book); }
    Names errorLines() const
    {
        return program.window.errorListFake.texts.empty() ? Names {}
                                                          : split(program.window.errorListFake.texts.back(), '\n');
    }
    test::LaunchedProgram program;
};

}

TEST_F(HostileImport, IsRefusedInOneLineAndTheOtherBooksComeIn)
{
    const std::string choices = "v" + repeated(200'000, "|v");
    program.drop({ program.download("Sea.epub"),
        hostile(
            EpubBuilder().member("OEBPS/content.opf", "<!DOCTYPE l [<!ATTLIST l a (" + choices + ") 'v'>]><package/>")),
        program.download("Land.epub") });
    EXPECT_EQ(program.titles(), (Names { "Sea", "Land" }));
    EXPECT_EQ(errorLines(), Names { tooLarge });
}

TEST_F(HostileImport, ThatUsesUpItsTimeIsFinishedOrRefusedAndTheOtherBooksComeIn)
{
    program.drop({ program.download("Sea.epub"), hostile(slowBook()), program.download("Land.epub") });
    EXPECT_EQ(program.book(0)->title(), "Sea");
    EXPECT_EQ(program.titles().back(), "Land");
    EXPECT_EQ(program.catalogue().count() + errorLines().size(), 3u);
}

TEST_F(HostileImport, StoppedDuringABookEndsWithIt)
{
    program.window.procTextFake.whenSet = [this](const std::string& text) {
        if (text == "2 of 3")
            program.window.actions.cancelProcess();
    };
    program.drop({ program.download("Sea.epub"), hostile(slowBook()), program.download("Land.epub") });
    EXPECT_EQ(program.titles().front(), "Sea");
    EXPECT_NE(program.titles().back(), "Land");
}

TEST_F(HostileImport, EndsWithTheProgramWithoutALine)
{
    Worker other;
    program.window.procTextFake.whenSet = [&](const std::string& text) {
        if (text == "2 of 3")
            other.perform([this] { program.controller->import().end(); });
    };
    program.drop({ program.download("Sea.epub"), hostile(slowBook()), program.download("Land.epub") });
    EXPECT_EQ(program.titles(), Names { "Sea" });
    EXPECT_EQ(program.storedCount(), 1u);
    EXPECT_EQ(errorLines(), Names {});
}

TEST_F(HostileImport, OfBooksWithLargeEntriesLeavesASmallCatalogue)
{
    const auto paths = "<package><manifest>" + repeated(1, "<item id='i' href='" + std::string(4'000, 'n') + "'/>")
        + "</manifest><spine>" + repeated(9'000, "<itemref idref='i'/>") + "</spine></package>";
    Names files;
    for (int i = 0; i < 20; ++i)
        files.push_back(
            program.download("Large" + std::to_string(i) + ".epub", EpubBuilder().member("OEBPS/content.opf", paths)));
    program.drop(files);
    EXPECT_EQ(program.catalogue().count(), 0u);
    EXPECT_EQ(errorLines().size(), 20u);
}

TEST(HostileEnd, AfterAKillInABatchTheNextLaunchTakesUpWhatWasCopied)
{
    test::TemporaryFolder home;
    const pid_t killed = fork();
    if (killed == 0) {
        test::Program program(home.path());
        program.launch();
        Names files;
        for (int i = 0; i < 6; ++i)
            files.push_back(program.download("Book" + std::to_string(i) + ".epub"));
        // At that time three of the books are copied and nothing is stored.
        program.window.procTextFake.whenSet = [](const std::string& text) {
            if (text == "4 of 6")
                ::raise(SIGKILL);
        };
        program.drop(files);
        _exit(EXIT_FAILURE);
    }
    int status = 0;
    ASSERT_EQ(waitpid(killed, &status, 0), killed);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    test::Program program(home.path());
    EXPECT_EQ(program.storedCount(), 0u);
    program.launch();
    auto titles = program.titles();
    std::sort(titles.begin(), titles.end());
    EXPECT_EQ(titles, (Names { "Book0", "Book1", "Book2" }));
    EXPECT_EQ(program.storedCount(), 3u);
}

}
