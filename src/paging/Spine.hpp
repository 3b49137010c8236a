#pragma once

#include "base/Url.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace pagora {

// The documents of the book in reading order, and the index of the one that is shown.
struct Spine {
    enum class Direction : int { Back = -1, On = 1 };

    std::vector<Url> bookSplits;
    // Maps the last path component of each URL to its index.
    std::map<std::string, std::uint64_t> splitIndexDict;
    std::uint64_t activeSplitIndex = 0;
    // Documents that could not be loaded. Page turns skip them.
    std::set<std::uint64_t> missingSplits;
    // The document that is being loaded; nullopt if the URL is not that of a document.
    std::optional<std::uint64_t> requestedSplit;

    void setDocuments(std::vector<Url> splits);
    // Returns the index of the document with that URL; 0 if there is none.
    std::uint64_t indexOf(const Url& url) const;
    bool lastIsActive() const { return activeSplitIndex + 1 == bookSplits.size(); }
    // Returns the nearest document in that direction that is not known to be missing.
    std::optional<std::uint64_t> next(Direction direction) const;
    // Called when the load of the requested document has failed.
    void requestFailed();
};

}
