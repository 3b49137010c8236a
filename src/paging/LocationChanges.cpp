#include "paging/LocationChanges.hpp"

#include <utility>

namespace pagora {

namespace {

constexpr std::size_t maxFragments = 8;

}

bool LocationChanges::add(const Url& url, std::uint64_t load)
{
    _url = url;
    _load = load;
    _fragments.push_back(url.fragment().value_or(""));
    if (_fragments.size() > maxFragments)
        _fragments.pop_front();
    return !std::exchange(_isProcessed, true);
}

void LocationChanges::forget()
{
    _fragments.clear();
    _isProcessed = false;
}

std::string LocationChanges::takeFragment()
{
    auto fragment = std::move(_fragments.front());
    _fragments.pop_front();
    return fragment;
}

Url LocationChanges::urlOf(const DataSource& source) const
{
    return _url && _load == source.load ? *_url : source.url;
}

}
