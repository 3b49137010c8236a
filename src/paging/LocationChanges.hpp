#pragma once

#include "page/WebView.hpp"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace pagora {

// Changes of the location within the page that are not processed yet. Only the newest few are kept.
class LocationChanges {
public:
    // The URL of that load's page has changed to this one. Returns whether the caller must start to process the
    // changes.
    bool add(const Url& url, std::uint64_t load);
    // Removes the oldest change and returns its fragment.
    std::string takeFragment();
    std::size_t count() const { return _fragments.size(); }
    bool empty() const { return _fragments.empty(); }
    // Whether more changes are to be processed; otherwise processing ends.
    bool continueProcessing() { return _isProcessed = !_fragments.empty(); }
    // Removes all changes; processing ends.
    void forget();
    // The URL of a reported page, with the fragment of the newest change.
    Url urlOf(const DataSource& source) const;

private:
    std::deque<std::string> _fragments;
    bool _isProcessed = false;
    // The URL with the last of these fragments, and the load that it belongs to.
    std::optional<Url> _url;
    std::uint64_t _load = 0;
};

}
