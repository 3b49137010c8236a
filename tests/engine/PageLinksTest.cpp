// Links to targets that cannot be shown.

#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <algorithm>

namespace pagora::test {

namespace {

class PageLinks : public ReadingTest, public testing::WithParamInterface<std::pair<const char*, const char*>> {
protected:
    void readWithLink(const std::string& target)
    {
        const auto link = "<p><a id=\"link\" href=\"" + target + "\">a link</a></p>";
        import(EpubBuilder()
                   .chapters(2)
                   .member("OEBPS/chapter1.xhtml", chapterOf(1, link))
                   .member("OEBPS/chapter2.xhtml", chapterOf(1, link))
                   .member("OEBPS/data.zip", "PK\x03\x04")
                   .write(_home.path("Links.epub")));
        open();
    }
    long timesFailed() const { return std::count(_lines.begin(), _lines.end(), "fail"); }
    void followLink()
    {
        const auto before = timesFailed();
        evaluate("document.getElementById('link').click()");
        ASSERT_TRUE(waitUntil([&] { return timesFailed() > before; }));
        settle();
    }
};

}

TEST_P(PageLinks, HideNoChapter)
{
    readWithLink(GetParam().second);
    turn(1);
    ASSERT_EQ(reader().activeSplitIndex(), 1u);
    turn(0);
    ASSERT_EQ(reader().activeSplitIndex(), 0u);
    followLink();
    turn(1);
    EXPECT_EQ(reader().activeSplitIndex(), 1u);
    followLink();
    turn(0);
    EXPECT_EQ(reader().activeSplitIndex(), 0u);
    turn(1);
    EXPECT_EQ(reader().activeSplitIndex(), 1u);
}

INSTANTIATE_TEST_SUITE_P(ThatCannotBeShown, PageLinks,
    testing::Values(std::pair("Mail", "mailto:reader@example.org"), std::pair("Telephone", "tel:+123"),
        std::pair("MissingFile", "gone.xhtml"), std::pair("UnknownType", "data.zip"),
        std::pair("UnreachableServer", "http://host.invalid/")),
    [](const auto& link) { return link.param.first; });

}
