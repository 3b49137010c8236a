// Pages that flood the program with messages, and pages that keep running after the book is closed.

#include "confinement/gtk/PageMemoryWatch.hpp"
#include "tests/engine/PageViewTest.hpp"
#include "tests/support/WitnessServer.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <unistd.h>

namespace pagora::test {

namespace {

struct Attack {
    const char* name;
    const char* script;
};

const Attack floods[] = {
    { "long addresses", "const x = 'x'.repeat(1.9e6); for (let i = 0; i < 20; ++i) location.hash = x + n++;" },
    { "short addresses", "for (let i = 0; i < 100; ++i) location.hash = n++;" },
    { "titles", "for (let i = 0; i < 100; ++i) document.title = n++;" },
    { "long titles", "const x = 'x'.repeat(2e4); for (let i = 0; i < 20; ++i) document.title = n++ + x;" },
    { "requests", "for (let i = 0; i < 200; ++i) new Image().src = 'http://127.0.0.1:40961/' + n++;" },
    { "requests of the book's files", "for (let i = 0; i < 200; ++i) new Image().src = 'red.svg?' + n++;" },
    { "requests by scripts",
        "for (let i = 0; i < 200; ++i) fetch('http://127.0.0.1:40961/' + n++, { mode: 'no-cors' }).catch(() => 0);" },
    { "long requests",
        "const x = 'x'.repeat(1e5); for (let i = 0; i < 20; ++i) new Image().src = 'http://127.0.0.1:40961/' + x + "
        "n++;" },
    { "steps of a frame",
        "const f = globalThis.f = globalThis.f || document.body.appendChild(document.createElement('iframe'));"
        "for (let i = 0; i < 100; ++i) f.src = 'data:text/html,' + n++;" },
    { "steps of many frames",
        "while (frames.length < 30) document.body.append(document.createElement('iframe'));"
        "for (const f of document.querySelectorAll('iframe')) f.src = 'data:text/html,' + n++;" },
    { "states", "for (let i = 0; i < 500; ++i) history.pushState('x', '', '#' + n++);" },
    { "prints", "for (let i = 0; i < 100; ++i) print();" },
    { "questions about permissions",
        "for (let i = 0; i < 100; ++i) navigator.permissions.query({ name: 'geolocation' }).catch(() => 0);" },
    { "dialogs", "for (let i = 0; i < 100; ++i) alert(n++);" },
};

const Attack endless[] = {
    { "a loop", "setTimeout(() => { for (;;); }, 10);" },
    { "a loop at the end", "onpagehide = onunload = () => { for (;;); };" },
    { "workers", "const u = URL.createObjectURL(new Blob(['for (;;);'])); for (let i = 0; i < 4; ++i) new Worker(u);" },
    { "steps to servers", "let n = 0; setInterval(() => { location.href = 'http://127.0.0.1:40961/' + n++; }, 400);" },
    { "steps to programs", "let n = 0; setInterval(() => { location.href = 'vscode://a' + n++; }, 50);" },
    { "a pattern", "setInterval(() => /^(a+)+$/.test('a'.repeat(40) + 'b'), 1);" },
    { "memory", "const kept = []; setInterval(() => kept.push(new Uint8Array(1 << 20).fill(1)), 1);" },
};

// Returns the descendants of a process with this name, truncated as in /proc.
std::vector<int> processesBelow(int parent, const std::string& name)
{
    std::vector<int> found;
    std::error_code ended;
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(parent) + "/task", ended)) {
        std::ifstream children(task.path() / "children");
        for (int child = 0; children >> child;) {
            std::string line;
            std::getline(std::ifstream("/proc/" + std::to_string(child) + "/comm"), line);
            if (line == name)
                found.push_back(child);
            const auto below = processesBelow(child, name);
            found.insert(found.end(), below.begin(), below.end());
        }
    }
    return found;
}

bool isThere(int process)
{
    return std::filesystem::exists("/proc/" + std::to_string(process) + "/exe");
}

}

class HostileMessagesTest : public PageViewTest {
protected:
    // Shows a page that runs this script in a loop.
    std::uint64_t showRepeating(const std::string& script)
    {
        return _view->loadRequest(write("chapter.xhtml",
            document("<p id='p'>Text</p><script>//<![CDATA[\nlet n = 0; setInterval(() => {" + script
                + "}, 1);\n//]]></script>")));
    }
    // Expects that the page is loaded again without its own scripts.
    void expectTakenOut(std::uint64_t attack)
    {
        ASSERT_TRUE(waitUntil([&] { return _delegate.terminations > 0; }));
        ASSERT_TRUE(waitUntil(
            [&] { return _view->currentLoad() > attack && _delegate.documentIsThere(_view->currentLoad()); }));
        EXPECT_EQ(evaluate("document.getElementById('p').textContent"), "Text");
        EXPECT_FALSE(webkit_settings_get_enable_javascript_markup(webkit_web_view_get_settings(_view->engineView())));
    }
    void limitMemory(PageMemoryWatch::Limits limits)
    {
        PageMemoryWatch::attach(webkit_web_view_get_context(_view->engineView()), limits);
    }
};

class HostileFloods : public HostileMessagesTest, public testing::WithParamInterface<Attack> { };

TEST_P(HostileFloods, EndThePageAndItComesBackWithoutScripts)
{
    show(PageKind::Columns);
    expectTakenOut(showRepeating(GetParam().script));
}

INSTANTIATE_TEST_SUITE_P(Of, HostileFloods, testing::ValuesIn(floods), [](const auto& flood) {
    std::string name = flood.param.name;
    std::erase(name, '\'');
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
});

TEST_F(HostileMessagesTest, AFewMessagesAreToldAndLongOnesAreNot)
{
    loadDocument("<p id='p'>Text</p>");
    evaluate("location.hash = 'x'.repeat(70000); 0");
    evaluate("location.hash = 'near'; 0");
    ASSERT_TRUE(waitUntil([&] { return !_delegate.locations.empty(); }));
    settle();
    ASSERT_EQ(_delegate.locations.size(), 1U);
    EXPECT_EQ(evaluate("location.hash.length"), "5");
    EXPECT_EQ(Url::fromString(_delegate.locations[0])->fragment(), "near");
    EXPECT_EQ(_delegate.terminations, 0);
}

TEST_F(HostileMessagesTest, ManyPicturesAreNoFlood)
{
    write("red.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='3' height='2'/>");
    std::string pictures;
    for (int i = 0; i < 2000; ++i)
        pictures += "<img src='red.svg?" + std::to_string(i) + "'/>";
    loadCompletely(write("chapter.xhtml", document(pictures)));
    EXPECT_EQ(_delegate.terminations, 0);
    EXPECT_EQ(evaluate("document.images.length"), "2000");
}

// The engine starts a process for each navigation, which blocks the main thread.
TEST_F(HostileMessagesTest, StepsToServersStartFewProcesses)
{
    const std::size_t before = processesBelow(getpid(), "WebKitWebProces").size();
    std::set<int> seen;
    auto look = Glib::signal_timeout().connect(
        [&] {
            const auto now = processesBelow(getpid(), "WebKitWebProces");
            seen.insert(now.begin(), now.end());
            return true;
        },
        20);
    expectTakenOut(showRepeating("location.href = 'http://127.0.0.1:40961/' + n++;"));
    look.disconnect();
    EXPECT_LE(seen.size(), before + 80);
}

TEST_F(HostileMessagesTest, ManyFramesOfServersAllCome)
{
    const WitnessServer server;
    std::string frames;
    for (int i = 0; i < 12; ++i)
        frames += "<iframe src='" + server.url("frame" + std::to_string(i)) + "'></iframe>";
    loadDocument(frames);
    ASSERT_TRUE(waitUntil([&] { return server.requests().size() >= 12; }));
    EXPECT_EQ(_delegate.terminations, 0);
}

// The page process rejects requests to ports that the engine blocks.
TEST_F(HostileMessagesTest, RequestsToForbiddenPortsAreNotTold)
{
    const auto attack = showRepeating("for (let i = 0; i < 200; ++i) new Image().src = 'http://127.0.0.1:9/' + n++;");
    ASSERT_TRUE(waitUntil([&] { return _delegate.documentIsThere(attack); }));
    settle();
    EXPECT_EQ(_delegate.terminations, 0);
    EXPECT_TRUE(_delegate.requests.empty());
}

TEST_F(HostileMessagesTest, WhatPagesKeepInTheNetworkProcessIsBounded)
{
    show(PageKind::Columns);
    limitMemory({ std::uint64_t(2000) << 20, std::uint64_t(250) << 20 });
    expectTakenOut(
        showRepeating("(globalThis.kept = globalThis.kept || []).push(new Blob([new Uint8Array(8 << 20).fill(n++)]))"));
    // Pages are loaded as before.
    loadDocument("<p id='q'>Next</p>");
    EXPECT_EQ(evaluate("document.getElementById('q').textContent"), "Next");
}

TEST_F(HostileMessagesTest, SharedMemoryCounts)
{
    show(PageKind::Columns);
    limitMemory({ std::uint64_t(400) << 20, std::uint64_t(2000) << 20 });
    expectTakenOut(showRepeating(
        "const c = document.createElement('canvas'); c.width = c.height = 2048;"
        "c.getContext('2d').fillRect(0, 0, 2048, 2048); (globalThis.kept = globalThis.kept || []).push(c);"));
}

TEST_F(HostileMessagesTest, ThereIsNoDatabaseToFill)
{
    loadDocument("<script>document.title = typeof indexedDB;</script>");
    EXPECT_EQ(evaluate("document.title"), "undefined");
}

TEST_F(HostileMessagesTest, SlowAnswersThatAddUpEndThePage)
{
    show(PageKind::Columns, 4);
    const auto attack = _view->loadRequest(write("chapter.xhtml",
        document("<p id='p'>Text</p><script>//<![CDATA[\nfunction work() { const end = performance.now() + 1600;"
                 "while (performance.now() < end); setTimeout(work, 1); }\nonload = work;\n//]]></script>")));
    ASSERT_TRUE(waitUntil([&] { return _delegate.documentIsThere(attack); }));
    for (int i = 0; i < 20 && _delegate.terminations == 0; ++i)
        evaluate("1");
    expectTakenOut(attack);
}

TEST_F(HostileMessagesTest, NoPageProcessOutlivesItsView)
{
    for (const auto& attack : endless) {
        SCOPED_TRACE(attack.name);
        show(PageKind::Columns);
        const auto load = _view->loadRequest(write("chapter.xhtml",
            document("<p>Text</p><script>//<![CDATA[\n" + std::string(attack.script) + "\n//]]></script>")));
        ASSERT_TRUE(waitUntil([&] { return _delegate.documentIsThere(load); }));
        const auto pages = processesBelow(getpid(), "WebKitWebProces");
        ASSERT_FALSE(pages.empty());
        embed(nullptr);
        EXPECT_TRUE(waitUntil([&] { return std::ranges::none_of(pages, isThere); }));
    }
}

}
