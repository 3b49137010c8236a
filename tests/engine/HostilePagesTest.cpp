// Books with one attack each, in the running program. The test checks files outside the books, whose secret must not
// leak, and a server that records its requests.

#include "tests/engine/HostilePages.hpp"

#include "base/Url.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/WitnessServer.hpp"

#include <algorithm>
#include <filesystem>
#include <set>

namespace pagora::test {

namespace {

constexpr auto secret = "k7v3q9-of-the-user";

bool holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

class HostilePages : public ReadingTest {
protected:
    // Imports and opens the book of the page, and waits until the attack has ended.
    void read(const HostilePage& page, const std::vector<std::string>& targets)
    {
        import(bookOf(page, _server.url(), targets).write(_home.path(page.name + ".epub")));
        openAgain();
    }
    void openAgain()
    {
        _server.forget();
        open(bookCount() - 1);
        EXPECT_TRUE(waitUntil([&] { return _server.heard("POST /over"); }));
    }
    void placeCanaries(const std::string& folder)
    {
        std::filesystem::create_directories(folder);
        for (const auto& [name, bytes] : canaries(secret, _server.url()))
            makeFile(folder + "/" + name, bytes);
    }
    // The book's own folder, then those of another book, the user and the program, in all spellings that might be
    // accepted.
    std::vector<std::string> targets()
    {
        const auto caches = std::string(_home.path("Caches/org.pagora.Test"));
        const auto other = caches + "/_books/Other";
        std::vector<std::string> urls = { "./" };
        for (const auto& folder : { other, _home.path("outside"), state().folders.libPath, _home.path("Data"), caches,
                 caches + "/_engine" }) {
            placeCanaries(folder);
            urls.push_back(Url::file(folder).text() + "/");
        }
        for (const auto* const scheme : { "FILE://", "file://localhost", "file:///proc/self/root", "resource://" })
            urls.push_back(scheme + other + "/");
        for (const auto* const up : { "../../Other/", "..%2f..%2fOther/", "%2e%2e/%2E%2e/Other/", ".%2e\\..\\Other\\" })
            urls.push_back(up);
        urls.push_back(_server.url("to?") + Url::file(other).text() + "/");
        return urls;
    }
    // Expects that neither the page nor the server has the secret, and that the page still exists.
    void expectNothingReached()
    {
        const auto text = evaluate("document.documentElement.outerHTML");
        EXPECT_TRUE(holds(text, "Text"));
        EXPECT_FALSE(holds(text, secret));
        for (const auto& request : _server.requests()) {
            EXPECT_FALSE(holds(request, secret)) << request;
            EXPECT_FALSE(holds(request, "reached/outside")) << request;
            EXPECT_FALSE(holds(request, "POST /error")) << request;
        }
    }

    // Opens these pages, with the same files in their book and outside of it.
    void readEach(const std::set<std::string>& names)
    {
        const auto folders = targets();
        std::size_t count = 0;
        for (const auto& page : pagesThatRead()) {
            if (!names.contains(page.name))
                continue;
            SCOPED_TRACE(page.name);
            ++count;
            read(page, folders);
            expectNothingReached();
            close();
            const bool own = _server.heard("reached/own") || _server.heard("ran/own") || _server.heard("\r\n\r\nown");
            EXPECT_TRUE(own || !page.worksInside);
        }
        EXPECT_EQ(count, names.size());
    }

    WitnessServer _server;
};

}

TEST_F(HostilePages, ReadNothingThroughPicturesAndScripts)
{
    readEach({ "Images", "Canvases", "Scripts", "Workers" });
}

TEST_F(HostilePages, ReadNothingThroughStylesFontsAndFrames)
{
    readEach({ "Styles", "Fonts", "Frames" });
}

TEST_F(HostilePages, ReadNothingThroughSoundsAndRequests)
{
    readEach({ "Sounds", "Requests" });
}

TEST_F(HostilePages, ReadNothingThroughMarkup)
{
    readEach({ "Drawings", "Transformations", "Entities" });
}

TEST_F(HostilePages, GoNowhereOutsideTheirBook)
{
    auto folders = targets();
    folders.erase(folders.begin());
    for (const auto& page : pagesThatGo()) {
        SCOPED_TRACE(page.name);
        read(page, folders);
        // Again with a user gesture.
        evaluate("for (const link of document.querySelectorAll('a')) link.click(); 0");
        settle();
        expectNothingReached();
        EXPECT_EQ(evaluate("location.pathname.split('/').pop()"), "chapter1.xhtml");
        close();
    }
}

TEST_F(HostilePages, KeepNothingFromOneOpeningToTheNext)
{
    _server.answer("frame", "Content-Type: text/html\r\n",
        "<html><body><script>" + replaced(scriptThatKeeps(), "{server}", _server.url()) + "</script></body></html>");
    _server.answer("asset",
        "Content-Type: text/plain\r\nCache-Control: max-age=9999999\r\nETag: \"kept\"\r\n"
        "Set-Cookie: server=kept; Max-Age=9999999\r\n",
        "asset");
    const auto expectNothingFound = [&] {
        EXPECT_TRUE(_server.heard("GET /asset"));
        for (const auto* const place : { "POST /found/page", "POST /found/frame", "GET /frame" })
            EXPECT_TRUE(_server.heard(place)) << place;
        for (const auto& request : _server.requests()) {
            EXPECT_TRUE(!request.starts_with("POST /found") || request.ends_with("[]")) << request;
            EXPECT_FALSE(request.starts_with("GET /frame") && holds(request, "Cookie")) << request;
            EXPECT_FALSE(holds(request, "If-None-Match")) << request;
        }
    };
    read(pageThatKeeps(), {});
    expectNothingFound();
    // Stored data is available while the book is open.
    _server.forget();
    evaluate("location.reload(); 0");
    ASSERT_TRUE(waitUntil([&] { return _server.heard("POST /over"); }));
    EXPECT_TRUE(_server.heard("[cookie,local,"));
    settle();
    close();
    {
        SCOPED_TRACE("opened again");
        openAgain();
        expectNothingFound();
        close();
    }
    restart();
    SCOPED_TRACE("opened after a new start");
    openAgain();
    expectNothingFound();
}

TEST_F(HostilePages, DoNotSeeTheReadersScripts)
{
    read(pageThatPries(), {});
    turn(1);
    turn(0);
    evaluate("document.all[3].setAttribute('style', 'color: red'); 0");
    evaluate("tell && tell('nobody')");
    expectNothingReached();
    EXPECT_EQ(evaluate("typeof pagoraLoad + typeof pagoraShownText"), "numberfunction");
}

TEST_F(HostilePages, HaveNoPowersOverTheDesktop)
{
    _server.answer(
        "attached", "Content-Type: text/plain\r\nContent-Disposition: attachment; filename=canary.bin\r\n", "x");
    _server.answer("binary", "Content-Type: application/octet-stream\r\n", "x");
    const auto windows = [] { return g_list_model_get_n_items(gtk_window_get_toplevels()); };
    const auto before = windows();
    read(pageThatGrabs(), {});
    expectNothingReached();
    _server.forget();
    // Again with a user gesture.
    evaluate("document.getElementById('grab').click(); 0");
    ASSERT_TRUE(waitUntil([&] { return _server.heard("POST /over"); }));
    expectNothingReached();
    // Neither the reader nor the page has opened a window.
    EXPECT_EQ(windows(), before);
    for (const auto& folder : { std::string(g_get_home_dir()), std::filesystem::current_path().string() }) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(
                 folder, std::filesystem::directory_options::skip_permission_denied))
            EXPECT_NE(entry.path().filename(), "canary.bin");
    }
}

}
