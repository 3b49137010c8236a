// Pages that try to crash or hang the program, or to exhaust its memory.

#include "confinement/gtk/PageMemoryWatch.hpp"
#include "tests/engine/PageViewTest.hpp"

namespace pagora::test {

namespace {

struct Hanging {
    const char* name;
    const char* script;
};

const Hanging hangings[] = {
    { "alerts without end", "for (;;) alert('x');" },
    { "prompts without end", "while (prompt('x') === null) { }" },
    { "prints without end", "for (;;) print();" },
    { "addresses without end", "for (let i = 0; ; ++i) location.hash = i;" },
    { "events without end", "for (;;) dispatchEvent(new Event('resize'));" },
    { "reloads without end", "onload = () => location.reload(); location.reload();" },
    { "itself without end", "onload = () => location.href = location.pathname + '?' + Math.random();" },
};

}

class HostileScriptsTest : public PageViewTest {
protected:
    // Sets the memory limit of each page process.
    void limitMemory(std::uint64_t megabytes)
    {
        PageMemoryWatch::attach(webkit_web_view_get_context(_view->engineView()), { megabytes << 20, megabytes << 20 });
    }
};

TEST_F(HostileScriptsTest, LeaveTheViewUsable)
{
    showWithShortTimeout(PageKind::Columns);
    const auto good = write("good.xhtml", document("<p>Good</p>"));
    for (const auto& hanging : hangings) {
        SCOPED_TRACE(hanging.name);
        _view->setBookFolder(_book);
        _delegate.terminations = 0;
        const auto bad = _view->loadRequest(
            write("bad.xhtml", document("<p>Bad</p><script>" + std::string(hanging.script) + "</script>")));
        EXPECT_TRUE(waitUntil([&] {
            return _delegate.terminations > 0 || _delegate.documentIsThere(bad) || _view->currentLoad() > bad + 2;
        }));
        load(good);
        EXPECT_EQ(evaluate("document.body.textContent"), "Good");
    }
}

TEST_F(HostileScriptsTest, ThatCloseThePageAreTakenOutAndItComesBack)
{
    const auto first = _view->loadRequest(
        write("chapter.xhtml", document("<p id='p'>Text</p><script>onload = () => close();</script>")));
    ASSERT_TRUE(waitUntil([&] { return _delegate.terminations > 0; }));
    ASSERT_TRUE(
        waitUntil([&] { return _view->currentLoad() > first && _delegate.documentIsThere(_view->currentLoad()); }));
    EXPECT_EQ(evaluate("document.getElementById('p').textContent"), "Text");
    settle();
}

TEST_F(HostileScriptsTest, ThatTakeTooMuchMemoryAreTakenOutAndThePageComesBack)
{
    for (const std::string take : { "setInterval(() => kept.push(new Uint8Array(8388608).fill(1)), 1)",
             "onload = () => { for (;;) kept.push(new Uint8Array(8388608).fill(1)); }" }) {
        SCOPED_TRACE(take);
        show(PageKind::Columns);
        limitMemory(400);
        const auto number = _view->loadRequest(
            write("chapter.xhtml", document("<p id='p'>Text</p><script>const kept = []; " + take + "</script>")));
        ASSERT_TRUE(waitUntil([&] { return _delegate.terminations > 0; }));
        ASSERT_TRUE(waitUntil(
            [&] { return _view->currentLoad() > number && _delegate.documentIsThere(_view->currentLoad()); }));
        EXPECT_EQ(evaluate("document.getElementById('p').textContent"), "Text");
        EXPECT_FALSE(webkit_settings_get_enable_javascript_markup(webkit_web_view_get_settings(_view->engineView())));
    }
}

}
