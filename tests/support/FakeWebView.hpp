#pragma once

#include "page/WebView.hpp"
#include "tests/support/FakeControls.hpp"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace pagora::test {

// A model of a laid-out chapter: a strip of `S` points, scrolled to `X`, in a view of `W`. Answers the readers' scripts
// as the engine would, and unknown scripts with an empty text.
struct ModelPage {
    std::int64_t S = 3200;
    std::int64_t X = 0;
    std::int64_t W = 800;
    // `offsetTop` of the existing elements, by id.
    std::map<std::string, std::int64_t> offsetTop;

    void scrollTo(std::int64_t offset) { X = std::clamp<std::int64_t>(offset, 0, std::max<std::int64_t>(S - W, 0)); }

    std::string answer(const std::string& script)
    {
        long long offset = 0;
        if (script == "window.scrollTo(document.body.scrollWidth, 0);")
            scrollTo(S);
        else if (std::sscanf(script.c_str(), "window.scrollTo(%lld, 0);", &offset) == 1)
            scrollTo(offset);
        else if (script == "document.body.scrollWidth;" || script == "document.body.scrollWidth")
            return std::to_string(S);
        else if (script == "window.pageXOffset")
            return std::to_string(X);
        else if (script == "window.innerWidth")
            return std::to_string(W);
        for (const auto& [id, top] : offsetTop) {
            if (script == "document.getElementById('" + id + "').offsetTop;")
                return std::to_string(top);
        }
        return "";
    }
};

// A page view without an engine. The test reports the outcome of loads. Scripts are answered by `answer`, by default
// the model page, at once unless replies are held.
class FakeWebView : public WebView {
public:
    void setDelegate(WebViewDelegate* value) override { delegate = value; }
    void setBookFolder(const std::string& path) override { bookFolder = path; }
    void setPageStart(const PageStart& start) override { starts.push_back(start); }
    std::uint64_t loadRequest(const Url& url) override
    {
        loads.push_back(url);
        if (journal)
            journal->push_back("webView.loadRequest");
        return loads.size();
    }
    std::uint64_t currentLoad() const override { return loads.size(); }

    Reply<std::string> evaluateScript(const std::string& script) override
    {
        scripts.push_back(script);
        if (!holdsReplies)
            return Reply<std::string>::of(answer(script));
        Reply<std::string> reply;
        _waiting.emplace_back(script, reply.resolver());
        return reply;
    }

    void prepareRequest(const Url& url, const std::vector<std::string>&) override { prepared.push_back(url); }
    void pageIsPrepared() override { ++timesPrepared; }
    void showUntilDrawn(const PagePicture& picture) override { shownUntilDrawn = picture; }
    void pageRests() override { ++timesRested; }
    std::optional<PagePicture> pictureAtRest() override { return atRest; }
    void prepareForUserAction() override { ++timesActed; }
    void setTextSizeMultiplier(double multiplier) override { textSizeMultiplier = multiplier; }
    Rect frame() const override { return rect; }
    double pixelSize() const override { return pixel; }
    void setHidden(bool value) override { hidden = value; }
    bool isHidden() const override { return hidden; }
    void makeFirstResponder() override { ++timesFocused; }

    // Simulates reports of the engine on the current load, or on the load with the number `load`.
    DataSource source(bool isMainResource = true, bool isLoading = false, std::uint64_t load = 0) const
    {
        const auto number = load ? load : currentLoad();
        return { loads.at(number - 1), number, isMainResource, isLoading };
    }
    // Reports the document, scrolled to its start.
    void finishDocument(bool isLoading = false)
    {
        page.X = 0;
        report(&WebViewDelegate::resourceDidFinishLoading, source(true, isLoading));
    }
    void finishSubresource(bool isLoading = false)
    {
        report(&WebViewDelegate::resourceDidFinishLoading, source(false, isLoading));
    }
    void commit() { report(&WebViewDelegate::didCommitLoad, source(true, true)); }
    void finishFrame() { report(&WebViewDelegate::didFinishLoadForFrame, source()); }
    void failDocument() { report(&WebViewDelegate::resourceDidFailLoading, source()); }
    void failSubresource() { report(&WebViewDelegate::resourceDidFailLoading, source(false)); }
    // Resizes the view.
    void resizeTo(double width, double height)
    {
        rect.width = width;
        rect.height = height;
        page.W = static_cast<std::int64_t>(width);
        if (delegate)
            delegate->didResize();
    }

    // Answers the oldest held script.
    void replyToNext()
    {
        auto [script, resolve] = std::move(_waiting.front());
        _waiting.pop_front();
        resolve(answer(script));
    }
    // Answers scripts until none is held.
    void replyToAll()
    {
        while (!_waiting.empty())
            replyToNext();
    }
    std::size_t heldReplies() const { return _waiting.size(); }

    // Returns the number of evaluations of this script.
    std::size_t timesEvaluated(const std::string& script) const
    {
        return static_cast<std::size_t>(std::count(scripts.begin(), scripts.end(), script));
    }

    ModelPage page;
    std::function<std::string(const std::string&)> answer
        = [this](const std::string& script) { return page.answer(script); };
    WebViewDelegate* delegate = nullptr;
    std::string bookFolder;
    // All loaded URLs, in order. The number of a load is its position, from 1.
    std::vector<PageStart> starts;
    std::vector<Url> loads;
    std::vector<Url> prepared;
    // All evaluated scripts, in order.
    std::vector<std::string> scripts;
    double textSizeMultiplier = 1;
    Rect rect { 0, 0, 800, 600 };
    double pixel = 1;
    bool hidden = false;
    int timesFocused = 0;
    int timesPrepared = 0;
    int timesRested = 0;
    int timesActed = 0;
    std::optional<PagePicture> shownUntilDrawn;
    // The picture of the page when the book is closed.
    std::optional<PagePicture> atRest;
    bool holdsReplies = false;
    Journal* journal = nullptr;

private:
    void report(void (WebViewDelegate::*event)(const DataSource&), const DataSource& what)
    {
        if (delegate)
            (delegate->*event)(what);
    }

    std::deque<std::pair<std::string, Reply<std::string>::Resolver>> _waiting;
};

}
