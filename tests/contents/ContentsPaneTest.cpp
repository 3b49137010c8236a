#include "contents/ContentsPane.hpp"

#include "tests/support/FakeEpubWindow.hpp"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace pagora;
using namespace pagora::test;

namespace {

Url url(const std::string& text)
{
    return *Url::fromString(text);
}

ContentsEntry entry(const std::string& text, const std::string& src, std::int32_t level = 1)
{
    return { text, url(src), level };
}

class ContentsPaneTest : public testing::Test, protected ContentsDelegate {
protected:
    ContentsPaneTest()
    {
        view.rect = { 0, 0, 250, 400 };
        view.clip = 400;
    }

    void changeChapter(const Url& target) override { opened.push_back(target); }

    void load(std::size_t count)
    {
        std::vector<ContentsEntry> entries;
        for (std::size_t i = 0; i < count; ++i)
            entries.push_back(entry(std::to_string(i), "/book/" + std::to_string(i) + ".xhtml"));
        pane.loadTOC(entries);
    }
    tocLinkTextField& link(std::size_t index) { return *pane.links().at(index); }

    FakeTocView view;
    ContentsPane pane { view, *this };
    std::vector<Url> opened;
};

}

TEST_F(ContentsPaneTest, AShortListStartsAtTheTop)
{
    load(3);
    EXPECT_EQ(view.rect, (Rect { 0, 0, 250, 400 }));
    EXPECT_EQ(link(0).frame(), (Rect { 0, 380, 250, 20 }));
    EXPECT_EQ(link(1).frame().y, 360);
    EXPECT_EQ(link(2).frame().y, 340);
    EXPECT_EQ(pane.tocContentHeight(), 60U);
    EXPECT_EQ(view.scrolledTo.back(), (std::pair<double, double> { 0, 400 }));
}

TEST_F(ContentsPaneTest, ALongListMakesThePaneTaller)
{
    load(50);
    EXPECT_EQ(view.rect.height, 1000);
    EXPECT_EQ(link(0).frame().y, 980);
    EXPECT_EQ(view.scrolledTo.back(), (std::pair<double, double> { 0, 1000 }));
}

TEST_F(ContentsPaneTest, AShorterListShrinksThePaneToTheVisibleArea)
{
    load(50);
    pane.removeAllLinks();
    load(3);
    EXPECT_EQ(view.rect.height, 400);
    EXPECT_EQ(view.links.size(), 3U);
}

TEST_F(ContentsPaneTest, DeeperLevelsAreIndentedFurther)
{
    pane.loadTOC({ entry("a", "a", 1), entry("b", "b", 2), entry("c", "c", 3), entry("d", "d", 0) });
    EXPECT_EQ(link(0).firstLineHeadIndent(), 5);
    EXPECT_EQ(link(1).firstLineHeadIndent(), 15);
    EXPECT_EQ(link(2).firstLineHeadIndent(), 25);
    EXPECT_EQ(link(3).firstLineHeadIndent(), -5);
}

TEST_F(ContentsPaneTest, TheLaterOfTwoEntriesForAFileIsLit)
{
    pane.loadTOC({ entry("first", "/book/a.xhtml"), entry("second", "/book/a.xhtml") });
    pane.updateTOClinkWithKey("a.xhtml", 600);
    EXPECT_FALSE(link(0).isActive());
    EXPECT_TRUE(link(1).isActive());
    EXPECT_EQ(link(1).backgroundColor(), Color::white(0.15));
}

TEST_F(ContentsPaneTest, ClickingTheActiveEntryReopensItsTarget)
{
    load(2);
    link(1).mouseDown();
    link(1).mouseDown();
    EXPECT_EQ(opened, (std::vector<Url> { url("/book/1.xhtml"), url("/book/1.xhtml") }));
    EXPECT_TRUE(link(1).isActive());
    EXPECT_EQ(link(1).backgroundColor(), Color::white(0.15));
}

TEST_F(ContentsPaneTest, TheKeyJoinsFileAndFragment)
{
    EXPECT_EQ(contentsKey(url("/book/chapter2.xhtml#sec3")), "chapter2.xhtmlsec3");
    EXPECT_EQ(contentsKey(url("/book/chapter2.xhtml")), "chapter2.xhtml");
    pane.loadTOC({ entry("a", "/book/a.xhtml"), entry("b", "/book/a.xhtml#s") });
    EXPECT_EQ(pane.tocTagDict(), (std::map<std::string, std::int64_t> { { "a.xhtml", 0 }, { "a.xhtmls", 1 } }));
}

TEST_F(ContentsPaneTest, SubsectionsAreDimmer)
{
    pane.loadTOC({ entry("a", "a.xhtml"), entry("b", "a.xhtml#s") });
    EXPECT_EQ(link(0).textColor(), Color::white(1));
    EXPECT_EQ(link(1).textColor(), Color::white(0.85));
}

TEST_F(ContentsPaneTest, TheActiveEntryIsScrolledTowardTheMiddle)
{
    load(50);
    pane.updateTOClinkWithKey("10.xhtml", 600);
    EXPECT_EQ(view.scrolledTo.back(), (std::pair<double, double> { 0, 780 - 300 }));
}

TEST_F(ContentsPaneTest, OnlyOneEntryIsActive)
{
    load(3);
    pane.updateTOClinkWithKey("0.xhtml", 600);
    pane.updateTOClinkWithKey("2.xhtml", 600);
    EXPECT_FALSE(link(0).isActive());
    EXPECT_EQ(link(0).backgroundColor(), Color::clear());
    link(1).mouseDown();
    EXPECT_FALSE(link(2).isActive());
    EXPECT_EQ(link(2).backgroundColor(), Color::clear());
    EXPECT_TRUE(link(1).isActive());
}

TEST_F(ContentsPaneTest, TheActiveEntryDoesNotScrollAgain)
{
    load(3);
    pane.updateTOClinkWithKey("1.xhtml", 600);
    const auto scrolled = view.scrolledTo.size();
    pane.updateTOClinkWithKey("1.xhtml", 600);
    EXPECT_EQ(view.scrolledTo.size(), scrolled);
}

TEST_F(ContentsPaneTest, AnUnknownKeyKeepsTheHighlight)
{
    load(3);
    pane.updateTOClinkWithKey("1.xhtml", 600);
    pane.updateTOClinkWithKey("other.xhtml", 600);
    EXPECT_TRUE(link(1).isActive());
}

TEST_F(ContentsPaneTest, AnEntryWithoutTextHasAKeyAndNoLink)
{
    pane.loadTOC({ entry("a", "a.xhtml"), { std::nullopt, url("b.xhtml"), 1 }, entry("c", "c.xhtml") });
    ASSERT_EQ(pane.links().size(), 2U);
    EXPECT_EQ(link(1).tag(), 2);
    EXPECT_EQ(link(1).frame().y, 340);
    pane.updateTOClinkWithKey("a.xhtml", 600);
    pane.updateTOClinkWithKey("b.xhtml", 600);
    EXPECT_FALSE(link(0).isActive());
    EXPECT_FALSE(link(1).isActive());
}

TEST_F(ContentsPaneTest, TheEntryUnderThePointerIsMarked)
{
    load(2);
    link(0).mouseEntered();
    EXPECT_EQ(link(0).backgroundColor(), Color::white(0.17));
    link(1).mouseEntered();
    EXPECT_EQ(link(0).backgroundColor(), Color::clear());
    link(1).mouseExited();
    EXPECT_EQ(link(1).backgroundColor(), Color::clear());
}

TEST_F(ContentsPaneTest, ThePointerLeavesTheActiveEntryAlone)
{
    load(2);
    link(0).mouseDown();
    link(0).mouseEntered();
    EXPECT_EQ(link(0).backgroundColor(), Color::white(0.15));
    link(0).mouseExited();
    EXPECT_EQ(link(0).backgroundColor(), Color::white(0.15));
    link(1).mouseEntered();
    EXPECT_EQ(link(0).backgroundColor(), Color::white(0.15));
}

TEST_F(ContentsPaneTest, BeforeTheFirstUpdateNothingIsActive)
{
    load(3);
    for (const auto& shown : pane.links())
        EXPECT_FALSE(shown->isActive());
}

TEST_F(ContentsPaneTest, TheViewLosesTheLinksOfAPaneThatGoes)
{
    {
        ContentsPane other(view, *this);
        other.loadTOC({ entry("a", "a.xhtml") });
        ASSERT_EQ(view.links.size(), 1U);
    }
    EXPECT_TRUE(view.links.empty());
}
