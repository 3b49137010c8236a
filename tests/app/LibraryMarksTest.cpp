#include "app/LibraryMarks.hpp"

#include "marks/MarksFile.hpp"
#include "tests/app/ThreeBooks.hpp"

namespace pagora {

namespace {

struct LibraryMarksTest : ThreeBooks {
    LibraryMarksTest()
    {
        createFolder(out());
        request.folder = out();
    }
    std::string out() const { return program.home.path("Out"); }
    // Highlights a text of the second chapter.
    void mark(const std::string& name, const std::string& text)
    {
        Mark mark;
        mark.id = newMarkId();
        mark.created = timeNow();
        mark.text = { "chapter2.xhtml", text, "", "", 1, 5, "" };
        ASSERT_TRUE(MarksFile(program.inLibrary(name + ".epub"), {}).write({ { mark } }).isSaved);
    }
    void exportAll()
    {
        program.window.actions.exportMarks();
        panel().start(request);
    }
    test::FakeMarksExportPanel& panel() { return program.window.exportPanel; }

    MarksExportRequest request;
};

}

TEST_F(LibraryMarksTest, ExportsTheMarksOfEachBookThatHasSome)
{
    mark("Sea", "waves");
    mark("Sea", "foam");
    mark("Tale", "once");
    exportAll();
    EXPECT_EQ(panel().outcome, "Exported marks: 3, from books: 2.");
    EXPECT_EQ(panel().progress, (Names { "0 of 2", "1 of 2" }));
    EXPECT_EQ(folderEntries(out())->size(), 2U);
    EXPECT_EQ(readFile(out() + "/Tale.md"), "# Tale (An Author)\n\n## Chapter 2\n\n> once\n\n(33 %)\n");
}

TEST_F(LibraryMarksTest, ExportsNothingWhereThereIsNothing)
{
    exportAll();
    EXPECT_EQ(panel().outcome, "No marks were exported.");
    EXPECT_TRUE(folderEntries(out())->empty());
}

TEST_F(LibraryMarksTest, EndsAfterTheBookAtWhichItIsCancelled)
{
    mark("Sea", "waves");
    mark("Plan", "first");
    panel().onProgress = [this] { panel().cancel(); };
    exportAll();
    EXPECT_EQ(panel().outcome, "The export was cancelled. Exported marks: 1, from books: 1.");
    EXPECT_EQ(folderEntries(out())->size(), 1U);
}

TEST_F(LibraryMarksTest, SaysInOneLineWhichBooksCouldNotBeExported)
{
    mark("Sea", "waves");
    writeFile(program.inLibrary("Plan.annotation"), "no JSON");
    exportAll();
    EXPECT_EQ(panel().outcome, "Exported marks: 1, from books: 1. 1 book could not be exported: “Plan”.");
    request.folder = program.home.path("nowhere");
    exportAll();
    EXPECT_EQ(panel().outcome, "No marks were exported. 2 books could not be exported, the first one is “Sea”.");
}

TEST_F(LibraryMarksTest, LeavesTheLibraryFolderAlone)
{
    mark("Sea", "waves");
    request.folder = program.inLibrary("");
    exportAll();
    EXPECT_EQ(panel().outcome, "The library's own folder cannot take exported marks. Choose another one.");
}

}
