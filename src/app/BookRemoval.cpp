#include "app/BookRemoval.hpp"

#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "catalogue/PendingRemovals.hpp"
#include "files/Files.hpp"

#include <algorithm>
#include <map>

namespace pagora {

namespace {

// The maximum number of files that an alert names.
constexpr std::size_t maxNames = 5;

std::string moreNames(std::size_t count)
{
    return formatted(plural("and %lu more", "and %lu more", count), static_cast<unsigned long>(count));
}

std::string listed(const std::vector<std::string>& paths)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < paths.size() && i < maxNames; ++i)
        names.push_back(formatted(_("“%s”"), lastPathComponent(paths[i]).c_str()));
    if (paths.size() > maxNames)
        names.push_back(moreNames(paths.size() - maxNames));
    return joined(names, "\n");
}

// Caches per folder whether its files can be moved to the Trash.
class TrashQuestions {
public:
    explicit TrashQuestions(const Workspace& workspace)
        : _workspace(workspace)
    {
    }

    bool takes(const std::string& path)
    {
        const auto folder = deletingLastPathComponent(path);
        const auto known = _answers.find(folder);
        if (known != _answers.end())
            return known->second;
        // The Trash cannot be queried for a missing file.
        if (!fileExists(path))
            return true;
        return _answers[folder] = _workspace.canRecycleFile(path);
    }

private:
    const Workspace& _workspace;
    std::map<std::string, bool> _answers;
};

}

BookRemoval::BookRemoval(const Platform& platform, LibraryState& state, LibraryViews& views)
    : _platform(platform)
    , _state(state)
    , _views(views)
{
}

void BookRemoval::remove(const std::vector<BookInfoPtr>& books, ByRemovingFromDisk remove)
{
    TrashQuestions trash(_platform.workspace);
    std::vector<std::string> archives;
    std::vector<std::string> withoutTrash;
    std::vector<BookInfoPtr> leaving;
    for (const auto& book : books) {
        const bool goesToTrash = remove == ByRemovingFromDisk::Yes && book->epubPath();
        if (goesToTrash && !trash.takes(*book->epubPath())) {
            withoutTrash.push_back(*book->epubPath());
            continue;
        }
        leaving.push_back(book);
        if (goesToTrash)
            archives.push_back(*book->epubPath());
    }
    const bool changed = takeOut(leaving);
    if (!archives.empty())
        PendingRemovals(_platform.defaults).add(archives);
    if (changed) {
        _state.catalogue.save(_platform.defaults);
        _views.refreshBookView(_state.catalogue.bookList());
    }
    tell(_("There is no Trash for this"), withoutTrash, _("Nothing was deleted: file and book stay in the library."));
    if (!archives.empty())
        recycle(std::move(archives));
}

bool BookRemoval::takeOut(std::vector<BookInfoPtr> books)
{
    std::erase_if(books, [](const auto& book) { return !book->isbn(); });
    std::vector<std::string> isbns;
    isbns.reserve(books.size());
    for (const auto& book : books)
        isbns.push_back(*book->isbn());
    const auto before = _state.catalogue.bookList();
    const auto removed = _state.catalogue.removeFirstWithISBNs(isbns);
    removeKeptPages(*before);
    for (std::size_t i = 0; i < books.size(); ++i) {
        if (removed[i] && _state.reading.currentBook == books[i])
            _state.reading.currentBook = nullptr;
    }
    return std::find(removed.begin(), removed.end(), true) != removed.end();
}

// Removes the pictures of the records that are no longer in the list. The list keeps its order.
void BookRemoval::removeKeptPages(const std::vector<BookInfoPtr>& before)
{
    const auto after = _state.catalogue.bookList();
    auto stays = after->begin();
    for (const auto& book : before) {
        if (stays != after->end() && *stays == book)
            ++stays;
        else if (book->epubPath())
            _state.keptPages.remove(*book->epubPath());
    }
}

void BookRemoval::recycle(std::vector<std::string> archives)
{
    _platform.runLoop.performInBackground([this, archives = std::move(archives)] {
        std::vector<std::string> notMoved;
        for (const auto& archive : archives) {
            const auto folder = deletingLastPathComponent(archive);
            if (!_platform.workspace.recycleFiles(folder, { lastPathComponent(archive) }) && fileExists(archive))
                notMoved.push_back(archive);
        }
        _platform.runLoop.postToMainThread([this, archives, notMoved = std::move(notMoved)] {
            PendingRemovals(_platform.defaults).remove(archives);
            tell(_("Not moved to the Trash"), notMoved, _("Nothing was deleted: the file is still in its folder."));
        });
    });
}

void BookRemoval::tell(const std::string& title, const std::vector<std::string>& archives, const std::string& outcome)
{
    if (!archives.empty())
        _platform.libraryWindow.runAlertPanel(title, listed(archives) + "\n\n" + outcome, _("OK"));
}

}
