#pragma once

#include "base/Url.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace pagora {

// The documents of the book in reading order, and which of them is shown.
struct Spine {
    enum class Direction : int { Back = -1, On = 1 };

    std::vector<Url> bookSplits;
    // Last path component of each URL to its index.
    std::map<std::string, std::uint64_t> splitIndexDict;
    std::uint64_t activeSplitIndex = 0;
    // Documents whose load failed; page turns pass over them.
    std::set<std::uint64_t> missingSplits;
    // The document that is being loaded; missing when the URL is not one of a document.
    std::optional<std::uint64_t> requestedSplit;

    void setDocuments(std::vector<Url> splits);
    // The index of the document with that URL; 0 when there is none.
    std::uint64_t indexOf(const Url& url) const;
    bool lastIsActive() const { return activeSplitIndex + 1 == bookSplits.size(); }
    // The nearest document in that direction that is not known to be missing.
    std::optional<std::uint64_t> next(Direction direction) const;
    // The load of the requested document has failed.
    void requestFailed();
};

}
