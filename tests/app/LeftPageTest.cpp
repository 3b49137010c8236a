#include "tests/app/ThreeBooks.hpp"

#include <utime.h>

namespace pagora {

namespace {

// A library of three books. Each page view has the same picture of what it shows.
struct LeftPageTest : ThreeBooks {
    PagePicture picture { 2, 1, 1, "engine", "white", std::string(8, 'p') };

    test::FakeWebView& webView() { return program.reader().webView; }
    void open(std::size_t index = 0)
    {
        program.doubleClick(index);
        webView().atRest = picture;
    }
    void openAndRead(std::size_t index = 0)
    {
        open(index);
        webView().finishDocument();
    }
    void readOnce(std::size_t index = 0)
    {
        openAndRead(index);
        program.closeReader();
    }
    // Returns whether the book is opened with the stored picture.
    bool opensWithPicture(std::size_t index = 0)
    {
        open(index);
        const auto shown = webView().shownUntilDrawn;
        EXPECT_TRUE(!shown || *shown == picture);
        program.closeReader();
        return shown.has_value();
    }
    std::size_t pictures() const
    {
        return folderEntries(program.home.path("defaults/pages")).value_or(std::vector<std::string> {}).size();
    }
};

}

TEST_F(LeftPageTest, IsShownWhenTheBookIsOpenedAgain)
{
    open();
    EXPECT_FALSE(webView().shownUntilDrawn);
    webView().finishDocument();
    program.closeReader();
    open();
    EXPECT_EQ(webView().shownUntilDrawn, picture);
}

TEST_F(LeftPageTest, IsShownBeforeTheBookIsUnpacked)
{
    readOnce();
    program.controller->killTempItems();
    program.runLoop.runPosted();
    program.runLoop.holdsBackground = true;
    open();
    EXPECT_TRUE(webView().loads.empty());
    EXPECT_EQ(webView().shownUntilDrawn, picture);
    program.runLoop.finishBackground();
}

TEST_F(LeftPageTest, IsOfItsBookAlone)
{
    readOnce(0);
    EXPECT_FALSE(opensWithPicture(1));
    EXPECT_TRUE(opensWithPicture(0));
}

TEST_F(LeftPageTest, IsKeptForTheNextLaunch)
{
    readOnce();
    test::Program next { program.home.path() };
    next.launch();
    next.doubleClick(0);
    EXPECT_EQ(next.reader().webView.shownUntilDrawn, picture);
}

TEST_F(LeftPageTest, StaysWhenTheBookIsClosedBeforeItsPageIsShown)
{
    readOnce();
    open();
    webView().atRest = std::nullopt;
    program.closeReader();
    EXPECT_TRUE(opensWithPicture());
}

TEST_F(LeftPageTest, IsNotShownAtAnotherPlace)
{
    openAndRead();
    webView().page.S = 3200;
    program.reader().actions.changePage(1);
    program.closeReader();
    openAndRead();
    EXPECT_TRUE(webView().shownUntilDrawn);
    program.reader().actions.changePage(1);
    webView().atRest = std::nullopt;
    program.closeReader();
    EXPECT_FALSE(opensWithPicture());
}

TEST_F(LeftPageTest, IsNotShownInAnotherChapter)
{
    readOnce();
    program.book(0)->setLastIndex(1);
    EXPECT_FALSE(opensWithPicture());
}

TEST_F(LeftPageTest, IsNotShownWithOtherDisplayOptions)
{
    auto& settings = program.controller->state().settings;
    const auto change = [&](const std::function<void()>& set) {
        readOnce();
        ASSERT_TRUE(opensWithPicture());
        set();
        open();
        EXPECT_FALSE(webView().shownUntilDrawn);
        webView().finishDocument();
        program.closeReader();
    };
    change([&] { settings.curFontName = "Palatino"; });
    change([&] { settings.curFontSize = settings.curFontSize * 1.1f; });
    change([&] { settings.curNumOfColumns = 3; });
    change([&] { settings.curColorOption = 2; });
}

TEST_F(LeftPageTest, IsNotShownForAnotherArchiveOfTheSameName)
{
    readOnce();
    const auto archive = program.book(0)->epubPath().value();
    const utimbuf earlier { 1000, 1000 };
    ASSERT_EQ(::utime(archive.c_str(), &earlier), 0);
    EXPECT_FALSE(opensWithPicture());
}

TEST_F(LeftPageTest, GoesWithItsBook)
{
    readOnce(0);
    readOnce(2);
    ASSERT_EQ(pictures(), 2u);
    program.window.shown->select({ 0 });
    program.window.monitor({ LibraryEvent::Kind::KeyDown, LibraryEvent::keyDelete, true });
    program.window.questions.back().answered(goForward);
    EXPECT_EQ(pictures(), 1u);
    EXPECT_TRUE(opensWithPicture(1));
}

TEST_F(LeftPageTest, OfABookThatIsRemovedWhileItIsWrittenIsNotKept)
{
    openAndRead();
    program.runLoop.holdsBackground = true;
    program.closeReader();
    program.window.shown->select({ 0 });
    program.window.monitor({ LibraryEvent::Kind::KeyDown, LibraryEvent::keyDelete, true });
    program.window.questions.back().answered(goForward);
    program.runLoop.finishBackground();
    EXPECT_EQ(pictures(), 0u);
}

TEST_F(LeftPageTest, OfABookThatIsRemovedWhileItIsReadIsNotKept)
{
    openAndRead();
    program.catalogue().removeAt(0);
    program.closeReader();
    EXPECT_EQ(pictures(), 0u);
}

TEST_F(LeftPageTest, GoesWithAReset)
{
    readOnce();
    program.controller->resetAppSettings();
    program.runLoop.runPosted();
    EXPECT_EQ(pictures(), 0u);
    EXPECT_FALSE(opensWithPicture());
}

TEST_F(LeftPageTest, GoesWhenAnotherVersionForgetsTheStoredValues)
{
    readOnce();
    program.defaults.setObject("BundleVersion", "6");
    program.defaults.synchronize();
    test::Program next { program.home.path() };
    next.launch();
    EXPECT_EQ(pictures(), 0u);
}

TEST_F(LeftPageTest, OfABookThatIsOpenedSinglyIsNotKept)
{
    program.controller->openFiles({ program.download("Single.epub") });
    ASSERT_TRUE(program.isReading());
    webView().atRest = picture;
    webView().finishDocument();
    program.closeReader();
    EXPECT_EQ(pictures(), 0u);
}

TEST_F(LeftPageTest, OfAFixedLayoutBookIsNotKept)
{
    program.drop({ program.download("Fixed.epub", EpubBuilder().fixedLayout(640, 480)) });
    program.doubleClick(3);
    program.readerWindows.fixedWindows.back()->webView.atRest = picture;
    program.readerWindows.fixedWindows.back()->actions.closeEPUB();
    EXPECT_EQ(pictures(), 0u);
}

TEST_F(LeftPageTest, OfAFileThatIsDamagedIsNotShown)
{
    readOnce();
    const auto folder = program.home.path("defaults/pages/");
    for (const auto& bytes : { std::string("x"), std::string(5'000'000, '\0') }) {
        const auto names = folderEntries(folder).value();
        for (const auto& name : names)
            ASSERT_TRUE(writeFile(folder + name, bytes));
        EXPECT_FALSE(opensWithPicture());
        readOnce();
        EXPECT_TRUE(opensWithPicture());
    }
}

TEST_F(LeftPageTest, IsNoReasonToFailWhereNothingCanBeWritten)
{
    test::makeFile(program.home.path("defaults/pages"), "in the way");
    readOnce();
    EXPECT_FALSE(opensWithPicture());
}

TEST_F(LeftPageTest, KeysOfABookThatIsUnpackedWaitForItsPage)
{
    program.runLoop.holdsBackground = true;
    open();
    auto& page = webView().page;
    page.S = 3200;
    program.reader().actions.changePage(1);
    program.reader().actions.changePage(1);
    program.reader().actions.changePage(0);
    EXPECT_TRUE(webView().scripts.empty());
    program.runLoop.finishBackground();
    ASSERT_EQ(webView().loads.size(), 1u);
    EXPECT_TRUE(webView().scripts.empty());
    webView().finishDocument();
    EXPECT_EQ(webView().timesEvaluated("window.scrollTo(1600, 0);"), 1u);
    EXPECT_EQ(page.X, 800);
    program.closeReader();
}

}
