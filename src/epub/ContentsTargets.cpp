#include "epub/ContentsTargets.hpp"

#include "base/Path.hpp"
#include "base/Unicode.hpp"
#include "files/Files.hpp"

#include <optional>
#include <set>

namespace pagora {

namespace {

// Books have one or two such folders; a few more are searched.
constexpr std::size_t maxFolders = 16;

class Targets {
public:
    explicit Targets(std::string bookPath)
        : _bookPath(std::move(bookPath))
    {
    }

    // Returns the path of the target's file; nullopt if the target stays unchanged.
    std::optional<std::string> found(const std::string& target)
    {
        const auto path = target.substr(0, target.find('#'));
        if (isFile(path))
            return std::nullopt;
        lookAround();
        for (const auto& package : _packageFolders) {
            const auto base = appendingPathComponent(_bookPath, package) + "/";
            if (!path.starts_with(base) || path.size() == base.size())
                continue;
            for (const auto& contents : _contentsFolders) {
                const auto folder = appendingPathComponent(_bookPath, contents);
                if (isFile(appendingPathComponent(folder, path.substr(base.size()))))
                    return appendingPathComponent(folder, target.substr(base.size()));
            }
        }
        return std::nullopt;
    }

private:
    // Tries both Unicode normal forms, as the page view does.
    bool isFile(const std::string& path) const
    {
        const auto plain = normalizedPath(path);
        return isPathInside(plain, _bookPath)
            && (isPlainFile(plain) || isPlainFile(composedForm(plain)) || isPlainFile(decomposedForm(plain)));
    }

    void lookAround()
    {
        if (!_hasLooked)
            lookInto("");
        _hasLooked = true;
    }

    void lookInto(const std::string& folder)
    {
        const auto path = appendingPathComponent(_bookPath, folder);
        for (const auto& name : folderEntries(path).value_or(std::vector<std::string> {})) {
            const auto extension = lowercased(pathExtension(name));
            if (extension == "opf" && _packageFolders.size() < maxFolders)
                _packageFolders.insert(folder);
            else if (extension == "ncx" && _contentsFolders.size() < maxFolders)
                _contentsFolders.insert(folder);
            else if (isFolder(appendingPathComponent(path, name)))
                lookInto(appendingPathComponent(folder, name));
        }
    }

    const std::string _bookPath;
    bool _hasLooked = false;
    std::set<std::string> _packageFolders;
    std::set<std::string> _contentsFolders;
};

}

Value::Array withTargetsFound(const Value::Array& content, const std::string& bookPath)
{
    Targets targets(bookPath);
    Value::Array result;
    result.reserve(content.size());
    for (const auto& entry : content) {
        const auto* src = entry.find("src");
        auto found = src && src->string() ? targets.found(*src->string()) : std::nullopt;
        if (!found) {
            result.push_back(entry);
            continue;
        }
        auto changed = *entry.dictionary();
        changed.insert_or_assign("src", std::move(*found));
        result.emplace_back(std::move(changed));
    }
    return result;
}

}
