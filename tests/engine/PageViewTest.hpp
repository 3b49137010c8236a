#pragma once

#include "page_view/gtk/PageEngine.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtkmm/window.h>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace pagora::test {

// Records its calls.
class RecordingDelegate : public WebViewDelegate {
public:
    struct Report {
        enum class Kind { Finished, FrameFinished, Failed } kind;
        DataSource source;
    };

    void resourceDidFinishLoading(const DataSource& source) override
    {
        add({ Report::Kind::Finished, source });
        if (onFinished)
            onFinished(source);
    }
    void didFinishLoadForFrame(const DataSource& source) override { add({ Report::Kind::FrameFinished, source }); }
    void resourceDidFailLoading(const DataSource& source) override { add({ Report::Kind::Failed, source }); }
    void resourceWillSendRequest(const Url& url, RequestedBy) override { requests.push_back(url.text()); }
    void decidePolicyForMIMEType(const std::string& type) override { types.push_back(type); }
    void didChangeLocationWithinPage(const Url& url) override { locations.push_back(url.text()); }
    void didResize() override
    {
        ++resizes;
        if (onResize)
            onResize();
    }

    void webProcessDidTerminate() override { ++terminations; }

    // Returns the number of reports of that kind for a load.
    int count(Report::Kind kind, std::uint64_t load) const;
    bool documentIsThere(std::uint64_t load) const;

    std::vector<Report> reports;
    std::vector<std::string> requests;
    std::vector<std::string> types;
    std::vector<std::string> locations;
    int resizes = 0;
    int terminations = 0;
    std::function<void(const DataSource&)> onFinished;
    std::function<void()> onResize;

private:
    void add(const Report& report) { reports.push_back(report); }
};

using Kind = RecordingDelegate::Report::Kind;

// A window, 800 by 600 points, with a page view on a temporary book folder. Only this class runs the main loop.
class PageViewTest : public testing::Test {
protected:
    static constexpr int width = 800;
    static constexpr int height = 600;

    PageViewTest();
    ~PageViewTest() override;

    // Replaces the page view by one of another kind, or with other options.
    void show(PageKind kind, double scriptTimeout = 60);
    // Same with a short script timeout: several times the load time of a plain page on this machine.
    void showWithShortTimeout(PageKind kind);
    // Replaces the view in the window.
    void embed(std::unique_ptr<PageView> view);

    // Runs the main loop until the condition holds. Returns false on timeout.
    bool waitUntil(const std::function<bool()>& condition, double seconds = 120);
    // Returns the script's result.
    std::string evaluate(const std::string& script);
    long long number(const std::string& script) { return std::atoll(evaluate(script).c_str()); }
    // Waits for two frames of the page, so that pending work of the engine is done.
    void settle();

    // Writes a file of the book and returns its URL.
    Url write(const std::string& name, const std::string& content);
    // Returns an XHTML document with this body, and these attributes of its root.
    static std::string document(
        const std::string& body, const std::string& head = {}, const std::string& attributes = {});
    // Returns `count` paragraphs with the ids p0, p1, …
    static std::string paragraphs(int count);
    // Loads the URL and waits for the document's report. Returns the number of the load.
    std::uint64_t load(const Url& url);
    std::uint64_t loadDocument(const std::string& body, const std::string& head = {});
    std::uint64_t loadCompletely(const Url& url);
    // Lays the page out as the reader does.
    void layOut(int columns);

    // Writes a file outside the book's folder and returns its URL.
    Url writeOutside(const std::string& name, const std::string& content);

    TemporaryFolder _folder;
    std::string _book;
    // Applies to views that are shown later.
    Confinement _confinement = Confinement::Full;
    RecordingDelegate _delegate;
    std::unique_ptr<PageEngine> _engine;
    std::unique_ptr<PageView> _view;
    Gtk::Window _window;
};

}
