#pragma once

#include "page/WebView.hpp"

#include <optional>
#include <set>

namespace pagora {

// Converts the engine's events into reports: the document first, then its resources, and only for the current load.
// Main thread only.
class LoadReports {
public:
    // `closing` repeats the document's report at the end of the load, for delegates that wait until nothing is loading.
    enum class ClosingReport : bool { No, Yes };
    explicit LoadReports(ClosingReport closing)
        : _closing(closing)
    {
    }

    void setDelegate(WebViewDelegate* delegate) { _delegate = delegate; }
    WebViewDelegate* delegate() const { return _delegate; }

    // Starts the next load and drops the reports and the selection of earlier ones. Returns its number.
    std::uint64_t begin(const Url& url);
    std::uint64_t currentLoad() const { return _load; }
    // The page's URL as requested; nullopt before the first load.
    const std::optional<Url>& url() const { return _url; }
    bool isFinished() const { return _finished; }

    // Called when the document is loaded again: resources so far are ignored.
    void forgetResources() { _heldBack = 0; }
    void documentComplete(std::uint64_t load);
    void resourceFinished(std::uint64_t load);
    void resourceFailed(std::uint64_t load);
    // Called when all resources have arrived or failed, or are no longer waited for.
    void everythingFinished(std::uint64_t load);
    // Called when the document could not be loaded.
    void documentFailed(std::uint64_t load);
    // Reports a request outside the book's files. Each request of the page itself is reported once per load.
    void willSendRequest(const Url& url, RequestedBy requestedBy);
    // Called when the user presses a link, or asks for the note of a reference.
    void pageFollowsLink();
    void pointsAtLink(const std::optional<PointedLink>& link);
    void selectionDidChange(const std::optional<PageSelection>& selection);
    void pressesMark(const std::optional<PressedMark>& mark);

private:
    bool isCurrent(std::uint64_t load) const { return load == _load && !_finished && _delegate; }
    DataSource source(bool isMainResource) const { return { *_url, _load, isMainResource, !_finished }; }
    void reportDocument();

    ClosingReport _closing;
    WebViewDelegate* _delegate = nullptr;
    std::uint64_t _load = 0;
    std::optional<Url> _url;
    bool _documentReported = false;
    bool _finished = true;
    // Number of resources that finished before their document was reported.
    int _heldBack = 0;
    std::set<std::string> _requests;
};

}
