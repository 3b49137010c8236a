#include "catalogue/PendingRemovals.hpp"

#include "base/Numbers.hpp"
#include "catalogue/Settings.hpp"

#include <algorithm>

namespace pagora {

namespace {

bool contains(const std::vector<std::string>& paths, const std::string& path)
{
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

}

std::vector<std::string> PendingRemovals::paths() const
{
    std::vector<std::string> paths;
    const auto stored = _defaults.objectForKey(defaults_keys::Removals);
    if (!stored || !stored->array())
        return paths;
    for (const auto& path : *stored->array()) {
        if (const auto text = stringFrom(&path))
            paths.push_back(*text);
    }
    return paths;
}

void PendingRemovals::add(const std::vector<std::string>& added)
{
    auto all = paths();
    for (const auto& path : added) {
        if (!contains(all, path))
            all.push_back(path);
    }
    store(all);
}

void PendingRemovals::remove(const std::vector<std::string>& removed)
{
    auto all = paths();
    std::erase_if(all, [&removed](const std::string& path) { return contains(removed, path); });
    store(all);
}

std::vector<std::string> PendingRemovals::without(std::vector<std::string> paths) const
{
    const auto pending = this->paths();
    std::erase_if(paths, [&pending](const std::string& path) { return contains(pending, path); });
    return paths;
}

void PendingRemovals::store(const std::vector<std::string>& paths)
{
    if (paths.empty()) {
        _defaults.removeObject(defaults_keys::Removals);
        return;
    }
    _defaults.setObject(defaults_keys::Removals, Value::Array(paths.begin(), paths.end()));
}

}
