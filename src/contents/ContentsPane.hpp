#pragma once

#include "contents/TocView.hpp"
#include "contents/tocLinkTextField.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// One entry of the table of contents.
struct ContentsEntry {
    std::optional<std::string> text;
    Url src;
    // 1 for the outermost level.
    std::int32_t level = 0;
};

// Returns the last path component of the URL, followed directly by its fragment if it has one.
std::string contentsKey(const Url& url);

// The table of contents of an open book: one link for each entry; the entry of the current page is highlighted. Used by
// both readers. Main thread only.
class ContentsPane {
public:
    // The view and the delegate must outlive the pane.
    ContentsPane(TocView& tocView, ContentsDelegate& delegate)
        : _tocView(tocView)
        , _shared { tocView, delegate }
    {
    }
    ~ContentsPane();
    ContentsPane(const ContentsPane&) = delete;
    ContentsPane& operator=(const ContentsPane&) = delete;

    void removeAllLinks();
    // Builds one link for each entry that has a text, from the top down, and scrolls to the top.
    void loadTOC(const std::vector<ContentsEntry>& entries);
    // Activates the entry with that key and scrolls it toward the middle of a split view of this height, in points.
    // Ignores unknown keys.
    void updateTOClinkWithKey(const std::string& key, double splitViewHeight);

    // Maps contents keys to entry indexes.
    const std::map<std::string, std::int64_t>& tocTagDict() const { return _tocTagDict; }
    void clearTocTagDict() { _tocTagDict.clear(); }
    // The number of entries times the height of a link, in points.
    std::uint64_t tocContentHeight() const { return _tocContentHeight; }
    const std::vector<std::unique_ptr<tocLinkTextField>>& links() const { return _links; }

private:
    TocView& _tocView;
    ContentsLinks _shared;
    std::vector<std::unique_ptr<tocLinkTextField>> _links;
    std::map<std::string, std::int64_t> _tocTagDict;
    std::uint64_t _tocContentHeight = 0;
};

}
