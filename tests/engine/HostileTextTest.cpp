#include "confinement/gtk/PageMemoryWatch.hpp"
#include "tests/engine/PageViewTest.hpp"

namespace pagora::test {

class HostileTextTest : public PageViewTest { };

TEST_F(HostileTextTest, HundredMegabytesLeaveTheViewUsable)
{
    constexpr std::size_t textBytes = 100'000'000;
    constexpr std::uint64_t maxMemory = 400u << 20;
    show(PageKind::Columns);
    PageMemoryWatch::attach(webkit_web_view_get_context(_view->engineView()), { maxMemory, maxMemory });
    const auto good = write("good.xhtml", document("<p>Good</p>"));
    std::string text;
    text.reserve(textBytes);
    while (text.size() < textBytes)
        text += "<p>A paragraph of a text that has no end, or none that anybody would wait for.</p>";
    _view->loadRequest(write("long.xhtml", document(text)));
    ASSERT_TRUE(waitUntil([&] { return _delegate.terminations > 0; }));
    load(good);
    EXPECT_EQ(evaluate("document.body.textContent"), "Good");
}

}
