#include "reflowable/EpubWindowController.hpp"

#include "tests/support/ReaderFixture.hpp"

#include <memory>
#include <string>
#include <vector>

using namespace pagora;
using namespace pagora::test;

namespace {

class EpubWindowControllerTest : public ReaderFixture {
protected:
    EpubWindowControllerTest()
    {
        controller->_epubController()->loadSplits({ Url::file("/book/a.xhtml"), Url::file("/book/b.xhtml") }, {});
        parts->webView.finishDocument();
    }

    std::unique_ptr<EpubWindowController> controller
        = std::make_unique<EpubWindowController>(std::make_unique<FakeEpubWindow>(parts), state, loop, hub);
};

}

TEST_F(EpubWindowControllerTest, ClosingIsLoggedAndLeftToTheHub)
{
    controller->closeEPUB();
    EXPECT_EQ(logged, std::vector<std::string> { "close epub!" });
    EXPECT_EQ(hub.timesClosed, 1);
}

TEST_F(EpubWindowControllerTest, AnActionMayEndTheWindow)
{
    hub.whenClosed = [this] { controller = nullptr; };
    const auto close = parts->actions.closeEPUB;
    close();
    EXPECT_FALSE(parts->open);
}

TEST_F(EpubWindowControllerTest, AFlickToTheRightTurnsBack)
{
    parts->webView.page.X = 1600;
    parts->actions.scrollWheelBegan(3);
    EXPECT_EQ(parts->webView.page.X, 800);
}

TEST_F(EpubWindowControllerTest, AFlickToTheLeftTurnsOn)
{
    parts->actions.scrollWheelBegan(-0.5);
    EXPECT_EQ(parts->webView.page.X, 800);
}

TEST_F(EpubWindowControllerTest, AVerticalGestureDoesNothing)
{
    parts->webView.scripts.clear();
    parts->actions.scrollWheelBegan(0);
    EXPECT_TRUE(parts->webView.scripts.empty());
}

TEST_F(EpubWindowControllerTest, TheKeysReachTheReader)
{
    parts->actions.goToLastPage();
    EXPECT_EQ(parts->webView.page.X, 2400);
    parts->actions.goToFirstPage();
    EXPECT_EQ(parts->webView.page.X, 0);
    parts->actions.changePage(1);
    EXPECT_EQ(parts->webView.page.X, 800);
    parts->actions.changeWidth();
    EXPECT_EQ(controller->_epubController()->numberOfColumns(), 3);
    parts->actions.toggleLeftView();
    EXPECT_TRUE(parts->mainSplitView.hidden[0]);
    parts->actions.searchContent("whale");
    EXPECT_EQ(logged, std::vector<std::string> { "search: whale" });
}

TEST_F(EpubWindowControllerTest, TheOptionsPanelComesAndGoes)
{
    parts->actions.displayOptions();
    EXPECT_TRUE(parts->displayOptions.visible);
    parts->actions.displayOptions();
    EXPECT_FALSE(parts->displayOptions.visible);
    parts->actions.displayOptions();
    controller->hideDisplayOptions();
    EXPECT_FALSE(parts->displayOptions.visible);
}

TEST_F(EpubWindowControllerTest, EnteringFullScreenIsNoted)
{
    parts->actions.windowDidEnterFullScreen();
    EXPECT_TRUE(hub.fullScreen);
}

TEST_F(EpubWindowControllerTest, TheLibrarysOwnFullScreenIsNot)
{
    hub.library.key = true;
    parts->actions.windowDidEnterFullScreen();
    EXPECT_FALSE(hub.fullScreen);
}

TEST_F(EpubWindowControllerTest, LeavingFullScreenIsNoted)
{
    hub.fullScreen = true;
    parts->window.key = true;
    parts->actions.windowDidExitFullScreen();
    EXPECT_FALSE(hub.fullScreen);
    EXPECT_EQ(hub.timesExitedFullScreen, 1);
    EXPECT_TRUE(logged.empty());
    EXPECT_FALSE(hub.library.visible);
}

TEST_F(EpubWindowControllerTest, LeavingFullScreenInAnotherWindowIsNot)
{
    hub.fullScreen = true;
    parts->actions.windowDidExitFullScreen();
    EXPECT_TRUE(hub.fullScreen);
}

TEST_F(EpubWindowControllerTest, LeavingFullScreenFinishesAClosing)
{
    hub.closing = true;
    parts->window.key = parts->window.visible = true;
    parts->window.rect = { 1, 2, 900, 700 };
    controller->set_epubController(nullptr);
    parts->actions.windowDidExitFullScreen();
    EXPECT_EQ(logged, std::vector<std::string> { "reset to mainWindow" });
    EXPECT_EQ(hub.library.rect, (Rect { 1, 2, 900, 700 }));
    EXPECT_TRUE(hub.library.key);
    EXPECT_FALSE(parts->window.visible);
    EXPECT_FALSE(hub.closing);
}

TEST_F(EpubWindowControllerTest, WithoutItsReaderTheWindowTakesNoActions)
{
    controller->set_epubController(nullptr);
    parts->webView.scripts.clear();
    parts->actions.changePage(1);
    parts->actions.displayOptions();
    parts->actions.closeEPUB();
    EXPECT_TRUE(parts->webView.scripts.empty());
    EXPECT_FALSE(parts->displayOptions.visible);
    EXPECT_EQ(hub.timesClosed, 0);
}

TEST_F(EpubWindowControllerTest, DraggingTheDividerLaysThePageOutAnew)
{
    parts->webView.scripts.clear();
    EXPECT_EQ(parts->mainSplitView.delegate->constrainSplitPosition(300, 0), 300);
    EXPECT_FALSE(parts->webView.scripts.empty());
}
