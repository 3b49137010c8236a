#include "fixed/FixedLayoutWindowController.hpp"

#include "tests/support/ReaderFixture.hpp"

#include <memory>
#include <string>

using namespace pagora;
using namespace pagora::test;

namespace {

class FixedLayoutWindowControllerTest : public ReaderFixture {
protected:
    FixedLayoutWindowControllerTest()
    {
        controller->_fixedController()->loadSplits({ Url::file("/book/1.xhtml"), Url::file("/book/2.xhtml") }, {});
        parts->webView.finishDocument();
    }

    std::unique_ptr<FixedLayoutWindowController> controller = std::make_unique<FixedLayoutWindowController>(
        std::make_unique<FakeFixedWindow>(parts), state, loop, hub, [](const std::string&) { return std::string(); });
};

}

TEST_F(FixedLayoutWindowControllerTest, ClosingIsSilentAndLeftToTheHub)
{
    controller->closeEPUB();
    EXPECT_TRUE(logged.empty());
    EXPECT_EQ(hub.timesClosed, 1);
}

TEST_F(FixedLayoutWindowControllerTest, AnActionMayEndTheWindow)
{
    hub.whenClosed = [this] { controller = nullptr; };
    const auto close = parts->actions.closeEPUB;
    close();
    EXPECT_FALSE(parts->open);
}

TEST_F(FixedLayoutWindowControllerTest, TheActionsReachTheReader)
{
    parts->actions.changePage(1);
    EXPECT_EQ(parts->webView.loads.size(), 2U);
    parts->webView.finishDocument();
    parts->actions.scrollWheelBegan(1);
    EXPECT_EQ(parts->webView.loads.size(), 3U);
    parts->actions.toggleLeftView();
    EXPECT_TRUE(parts->mainSplitView.hidden[0]);
}

TEST_F(FixedLayoutWindowControllerTest, WithoutItsReaderTheWindowTakesNoActions)
{
    controller->set_fixedController(nullptr);
    parts->actions.changePage(1);
    parts->actions.closeEPUB();
    EXPECT_EQ(parts->webView.loads.size(), 1U);
    EXPECT_EQ(hub.timesClosed, 0);
}
