#pragma once

#include "page/WebView.hpp"

#include <optional>
#include <set>

namespace pagora {

// Turns the engine's events of one page view into the reports of its loads: the document first, then its resources,
// each load's only while it is the current one. Main thread.
class LoadReports {
public:
    // `closing` says whether a document's report is repeated at the end of its load for those who wait for a source
    // that is no longer loading.
    enum class ClosingReport : bool { No, Yes };
    explicit LoadReports(ClosingReport closing)
        : _closing(closing)
    {
    }

    void setDelegate(WebViewDelegate* delegate) { _delegate = delegate; }
    WebViewDelegate* delegate() const { return _delegate; }

    // Starts the next load; what is still to come of the earlier ones is dropped. Returns its number.
    std::uint64_t begin(const Url& url);
    std::uint64_t currentLoad() const { return _load; }
    // The page's URL as requested; missing before the first load.
    const std::optional<Url>& url() const { return _url; }
    bool isDocumentReported() const { return _documentReported; }
    bool isFinished() const { return _finished; }

    // The document is read once more: what has come until then does not count.
    void forgetResources() { _heldBack = 0; }
    void documentComplete(std::uint64_t load);
    void resourceFinished(std::uint64_t load);
    void resourceFailed(std::uint64_t load);
    // All resources are there or failed, or are no longer waited for.
    void everythingFinished(std::uint64_t load);
    // The document cannot be had.
    void documentFailed(std::uint64_t load);
    // Says that something outside the book's files is asked for; of the page's own requests each once a load.
    void willSendRequest(const Url& url, RequestedBy requestedBy);

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
    // Resources that finished before their document was reported.
    int _heldBack = 0;
    std::set<std::string> _requests;
};

}
