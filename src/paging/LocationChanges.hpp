#pragma once

#include "page/WebView.hpp"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace pagora {

// Changes of the location within the page that are not yet tracked. The newest few count.
class LocationChanges {
public:
    // The page of that load has this URL now.
    void add(const Url& url, std::uint64_t load);
    // Takes the fragment of the oldest change.
    std::string takeFragment();
    std::size_t count() const { return _fragments.size(); }
    bool empty() const { return _fragments.empty(); }
    void forget() { _fragments.clear(); }
    // The URL of the page that is reported: a fragment that the location took on belongs to it from then on.
    Url urlOf(const DataSource& source) const;

private:
    std::deque<std::string> _fragments;
    // The URL with the last of these fragments, and the load that it belongs to.
    std::optional<Url> _url;
    std::uint64_t _load = 0;
};

}
