#include "contents/ContentsPane.hpp"

#include <algorithm>

namespace pagora {

std::string contentsKey(const Url& url)
{
    return url.lastPathComponent() + url.fragment().value_or("");
}

ContentsPane::~ContentsPane()
{
    // The view may outlive the links that it shows.
    removeAllLinks();
}

void ContentsPane::removeAllLinks()
{
    _tocView.removeAllSubviews();
    _shared.active = nullptr;
    _shared.hovered = nullptr;
    _links.clear();
}

void ContentsPane::loadTOC(const std::vector<ContentsEntry>& entries)
{
    _tocContentHeight = entries.size() * static_cast<std::uint64_t>(tocLinkTextField::height);
    const auto needed = static_cast<double>(_tocContentHeight);
    Rect pane = _tocView.frame();
    pane.height = needed > pane.height ? needed : _tocView.clipHeight();
    _tocView.setFrame(pane);

    std::map<std::string, std::int64_t> tagOfKey;
    std::vector<tocLinkTextField*> shown;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto& entry = entries[i];
        const auto tag = static_cast<std::int64_t>(i);
        tagOfKey[contentsKey(entry.src)] = tag;
        if (!entry.text)
            continue;
        const double y = pane.height - tocLinkTextField::height * (tag + 1);
        const Rect frame { 0, y, pane.width, tocLinkTextField::height };
        _links.push_back(std::make_unique<tocLinkTextField>(_shared, tag, frame, *entry.text, entry.src, entry.level));
        shown.push_back(_links.back().get());
    }
    _tocView.addSubviews(shown);
    _tocTagDict = std::move(tagOfKey);
    _tocView.scrollToPoint(0, pane.height);
}

void ContentsPane::updateTOClinkWithKey(const std::string& key, double splitViewHeight)
{
    const auto found = _tocTagDict.find(key);
    if (found == _tocTagDict.end())
        return;
    const auto tag = found->second;
    if (_shared.active && _shared.active->tag() == tag)
        return;
    _shared.deactivateActive();
    const auto link = std::lower_bound(_links.begin(), _links.end(), tag,
        [](const auto& candidate, std::int64_t wanted) { return candidate->tag() < wanted; });
    if (link == _links.end() || (*link)->tag() != tag)
        return;
    (*link)->setIsActive(true);
    (*link)->setBackgroundColor(tocLinkTextField::activeBackground);
    _tocView.scrollToPoint(0, (*link)->frame().y - splitViewHeight / 2);
}

}
