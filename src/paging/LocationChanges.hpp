#pragma once

#include "page/WebView.hpp"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace pagora {

// Changes of the page's URL that were not processed yet. Only the newest few are kept.
class LocationChanges {
public:
    // Adds a change of the page's URL during the load `load`. Returns whether the caller must start to process the
    // changes.
    bool add(const Url& url, std::uint64_t load);
    // Removes the oldest change and returns its fragment.
    std::string takeFragment();
    std::size_t count() const { return _fragments.size(); }
    bool empty() const { return _fragments.empty(); }
    // Returns whether more changes must be processed. If not, processing ends.
    bool continueProcessing() { return _isProcessed = !_fragments.empty(); }
    // Removes all changes and ends processing.
    void forget();
    // Returns the URL of a reported page, with the fragment of the newest change.
    Url urlOf(const DataSource& source) const;

private:
    std::deque<std::string> _fragments;
    bool _isProcessed = false;
    // The last URL that was added, and the load that it belongs to.
    std::optional<Url> _url;
    std::uint64_t _load = 0;
};

}
