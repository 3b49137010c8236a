#include "reflowable/EpubWindowController.hpp"
#include "tests/support/FakeEpubWindow.hpp"
#include "tests/support/FakeReaderHub.hpp"
#include "tests/support/ManualRunLoop.hpp"

#include <gtest/gtest.h>

namespace pagora::test {

namespace {

class Selections : public testing::Test {
protected:
    Selections()
    {
        controller->_epubController()->loadSplits({ Url::file("/book/a.xhtml"), Url::file("/book/b.xhtml") }, {});
        parts->webView.finishDocument();
        parts->webView.answer
            = [](const std::string& script) { return script == "pagoraSelection.text()" ? "the whole text" : ""; };
    }
    void select(const std::string& text)
    {
        parts->webView.delegate->selectionDidChange(
            PageSelection { PageSelection::Cause::Pointer, text, { { 1, 2, 3, 4 } }, { 1, 2, 3, 4 }, { 1, 2, 3, 4 } });
    }

    ManualRunLoop loop;
    FakeReaderHub hub;
    ReaderState state;
    std::shared_ptr<ReaderWindowParts> parts = std::make_shared<ReaderWindowParts>();
    std::unique_ptr<EpubWindowController> controller
        = std::make_unique<EpubWindowController>(std::make_unique<FakeEpubWindow>(parts), state, loop, hub);
};

}

TEST_F(Selections, AreShownAndHiddenAsThePageTells)
{
    select("lamp");
    ASSERT_TRUE(parts->selection);
    EXPECT_EQ(parts->selection->text, "lamp");
    parts->webView.delegate->selectionDidChange(std::nullopt);
    EXPECT_FALSE(parts->selection);
}

TEST_F(Selections, AreCopiedWhole)
{
    select("the whole");
    parts->actions.copySelection();
    EXPECT_EQ(parts->copied, std::vector<std::string> { "the whole text" });
}

TEST_F(Selections, AreNotCopiedWhereThePageHasNoMore)
{
    select("lamp");
    parts->webView.answer = [](const std::string&) { return ""; };
    parts->actions.copySelection();
    EXPECT_TRUE(parts->copied.empty());
}

TEST_F(Selections, AreSearchedForAndLookedUp)
{
    select("lamp");
    parts->actions.findSelection();
    parts->actions.lookUpSelection();
    EXPECT_EQ(parts->searchedFor, std::vector<std::string> { "lamp" });
    EXPECT_EQ(hub.lookedUp, std::vector<std::string> { "lamp" });
}

TEST_F(Selections, AreAskedForOfThePage)
{
    parts->webView.scripts.clear();
    parts->actions.askForSelection();
    EXPECT_EQ(parts->webView.scripts, std::vector<std::string> { "pagoraSelection.ask()" });
}

TEST_F(Selections, AreForgottenByThePageWhenTheBarIsHidden)
{
    select("lamp");
    parts->webView.scripts.clear();
    parts->actions.endSelection();
    EXPECT_FALSE(parts->selection);
    EXPECT_EQ(parts->webView.scripts, std::vector<std::string> { "pagoraSelection.forget()" });
}

TEST_F(Selections, DoNothingOnceTheReadingHasEnded)
{
    select("lamp");
    controller->set_epubController(nullptr);
    parts->actions.copySelection();
    parts->actions.findSelection();
    EXPECT_TRUE(parts->copied.empty());
    EXPECT_TRUE(parts->searchedFor.empty());
}

}
