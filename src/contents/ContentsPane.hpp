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
    // 1 for the outermost.
    std::int32_t level = 0;
};

// The last path component of the URL followed directly by its fragment, if it has one.
std::string contentsKey(const Url& url);

// The table of contents of an open book: one link an entry, the one of the page shown highlighted. Both readers use it.
// Main thread.
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
    // Makes the entry of that key the active one and scrolls it toward the middle of a split view of this height, in
    // points. An unknown key changes nothing.
    void updateTOClinkWithKey(const std::string& key, double splitViewHeight);

    // Contents key to entry index.
    const std::map<std::string, std::int64_t>& tocTagDict() const { return _tocTagDict; }
    void clearTocTagDict() { _tocTagDict.clear(); }
    // Entries times the height of a link, in points.
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
