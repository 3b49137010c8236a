#include "marks/MarksFile.hpp"

#include "base/FileDescriptor.hpp"
#include "base/Log.hpp"
#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "files/Files.hpp"
#include "marks/AnnotationJson.hpp"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unordered_map>

namespace pagora {

namespace {

constexpr const char* extension = "annotation";
// The maximum number of names tried for a damaged file.
constexpr int maxDamaged = 100;

// Excludes other processes of this program between reading and writing the file. Gives up after two seconds, so that a
// lock that is never released does not prevent saving.
class FolderLock {
public:
    explicit FolderLock(const std::string& folder)
        : _folder(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        constexpr int attempts = 200;
        for (int i = 0; _folder && i < attempts && ::flock(_folder.get(), LOCK_EX | LOCK_NB) != 0; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }

private:
    FileDescriptor _folder;
};

// Returns whether the text is not a placeholder for a missing one.
bool isKnown(const std::string& text)
{
    return text != "<not found>" && text != "<unknown>";
}

std::string nameOf(const std::string& path)
{
    return lastPathComponent(path);
}

}

void mergeInto(AnnotationSet& set, AnnotationSet added)
{
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < set.marks.size(); ++i)
        places.emplace(set.marks[i].id, i);
    for (auto& mark : added.marks) {
        const auto [place, isNew] = places.emplace(mark.id, set.marks.size());
        if (isNew)
            set.marks.push_back(std::move(mark));
        else if (timeOfChange(mark) > timeOfChange(set.marks[place->second]))
            set.marks[place->second] = std::move(mark);
    }
    for (auto& other : added.others) {
        if (std::find(set.others.begin(), set.others.end(), other) == set.others.end())
            set.others.push_back(std::move(other));
    }
}

MarksFile::MarksFile(const std::string& archive, MarkedBook book)
    : _path(
        appendingPathComponent(deletingLastPathComponent(archive), deletingPathExtension(archive)) + '.' + extension)
    , _book(std::move(book))
{
    for (auto* const text : { &_book.identifier, &_book.title, &_book.author }) {
        if (!isKnown(*text))
            text->clear();
    }
}

MarksOnDisk MarksFile::read() const
{
    const FolderLock lock(deletingLastPathComponent(_path));
    auto found = find();
    return { std::move(found.set.marks), std::move(found.problem), true };
}

MarksOnDisk MarksFile::write(const std::vector<MarkChange>& changes) const
{
    const FolderLock lock(deletingLastPathComponent(_path));
    auto found = find();
    auto& marks = found.set.marks;
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < marks.size(); ++i)
        places.emplace(marks[i].id, i);
    std::vector<bool> isRemoved(marks.size(), false);
    for (const auto& change : changes) {
        const auto [place, isNew] = places.emplace(change.mark.id, marks.size());
        if (isNew) {
            marks.push_back(change.mark);
            isRemoved.push_back(false);
        }
        auto& mark = marks[place->second];
        if (timeOfChange(mark) > timeOfChange(change.mark))
            continue;
        auto written = std::move(mark.written);
        mark = change.mark;
        mark.written = std::move(written);
        mark.written = markText(mark);
        isRemoved[place->second] = change.isRemoved;
    }
    std::size_t index = 0;
    std::erase_if(marks, [&](const Mark&) { return isRemoved[index++]; });
    if (!found.canBeWritten)
        return { std::move(marks), std::move(found.problem), false };
    if (!writeFile(_path, annotationText(found.set))) {
        const auto line
            = formatted(_("“%s” could not be written. The last marks are not saved."), nameOf(_path).c_str());
        return { std::move(marks), line, false };
    }
    return { std::move(marks), std::move(found.problem), true };
}

MarksFile::Found MarksFile::find() const
{
    if (!fileExists(_path))
        return { ofSameBook(), {} };
    const auto bytes = readFile(_path, maxMarksFileBytes);
    if (!bytes) {
        const auto line = formatted(_("“%s” could not be read. Marks are not saved."), nameOf(_path).c_str());
        return { annotationSetAbout(_book), line, false };
    }
    if (auto set = annotationSetFrom(*bytes))
        return { std::move(*set), {} };
    return setAside();
}

AnnotationSet MarksFile::ofSameBook() const
{
    auto set = annotationSetAbout(_book);
    const auto folder = deletingLastPathComponent(_path);
    if (_book.identifier.empty())
        return set;
    auto names = folderEntries(folder).value_or(std::vector<std::string> {});
    std::sort(names.begin(), names.end());
    for (const auto& name : names) {
        if (pathExtension(name) != extension)
            continue;
        const auto bytes = readFile(appendingPathComponent(folder, name), maxMarksFileBytes);
        if (!bytes || bytes->find(_book.identifier) == std::string::npos)
            continue;
        auto other = annotationSetFrom(*bytes);
        if (!other)
            continue;
        const auto identifiers = identifiersOf(*other);
        if (std::find(identifiers.begin(), identifiers.end(), _book.identifier) != identifiers.end())
            mergeInto(set, std::move(*other));
    }
    return set;
}

MarksFile::Found MarksFile::setAside() const
{
    std::string line;
    for (int i = 1; i <= maxDamaged; ++i) {
        const auto path = _path + "-damaged" + (i == 1 ? "" : "-" + std::to_string(i));
        if (fileExists(path))
            continue;
        if (::rename(_path.c_str(), path.c_str()) != 0)
            break;
        line = formatted(_("“%s” is damaged. It was set aside as “%s”."), nameOf(_path).c_str(), nameOf(path).c_str());
        log("a file of marks is damaged: " + _path);
        return { ofSameBook(), line };
    }
    line = formatted(_("“%s” could not be read. Marks are not saved."), nameOf(_path).c_str());
    return { annotationSetAbout(_book), line, false };
}

}
