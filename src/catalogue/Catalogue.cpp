#include "catalogue/Catalogue.hpp"

#include "base/Numbers.hpp"
#include "base/Path.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "catalogue/Settings.hpp"
#include "store/RowsInMemory.hpp"

#include <algorithm>
#include <unordered_map>

namespace pagora {

namespace {

std::optional<std::string> storedText(const Value& entry, const char* key)
{
    const auto value = entryUnder(key, entry);
    return stringFrom(value ? &*value : nullptr);
}

}

void Catalogue::save(UserDefaults& defaults) const
{
    std::scoped_lock lock(_saving);
    defaults.setObject(defaults_keys::BookData, bookData());
    defaults.synchronize();
}

void Catalogue::setBookData(Value::Array bookData)
{
    std::scoped_lock lock(_mutex);
    _bookData = std::move(bookData);
}

void Catalogue::bookDataToList(PreparedRecords* prepared)
{
    PreparedRecords none;
    std::scoped_lock lock(_mutex);
    if (_bookData.empty())
        return;
    _bookList.reserve(_bookData.size());
    _epubLocations.reserve(_bookData.size());
    for (auto& book : (prepared ? *prepared : none).take(_bookData)) {
        _epubLocations.push_back(book->epubPath().value_or(""));
        _bookList.push_back(std::move(book));
    }
    _sharedBookList = nullptr;
}

void Catalogue::clear()
{
    std::scoped_lock lock(_mutex);
    _bookData.clear();
    _bookList.clear();
    _epubLocations.clear();
    _sharedBookList = nullptr;
}

void Catalogue::append(const BookInfoPtr& book, Value entry, std::string location)
{
    std::scoped_lock lock(_mutex);
    _bookList.push_back(book);
    _bookData.push_back(std::move(entry));
    _epubLocations.push_back(std::move(location));
    _sharedBookList = nullptr;
}

void Catalogue::removeAt(std::size_t index)
{
    std::scoped_lock lock(_mutex);
    if (index >= _bookData.size())
        return;
    const auto offset = static_cast<std::ptrdiff_t>(index);
    _bookData.erase(_bookData.begin() + offset);
    _bookList.erase(_bookList.begin() + offset);
    _epubLocations.erase(_epubLocations.begin() + offset);
    _sharedBookList = nullptr;
}

std::vector<bool> Catalogue::removeFirstWithISBNs(const std::vector<std::string>& isbns)
{
    // The indexes of the requests for each identifier, in reverse order.
    std::unordered_map<std::string, std::vector<std::size_t>> requests;
    for (std::size_t i = isbns.size(); i-- > 0;)
        requests[isbns[i]].push_back(i);
    std::vector<bool> removed(isbns.size());
    std::scoped_lock lock(_mutex);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < _bookData.size(); ++i) {
        const auto isbn = requests.empty() ? std::nullopt : storedText(_bookData[i], entry_keys::ISBN);
        const auto request = isbn ? requests.find(*isbn) : requests.end();
        if (request != requests.end()) {
            removed[request->second.back()] = true;
            request->second.pop_back();
            if (request->second.empty())
                requests.erase(request);
            continue;
        }
        if (kept != i) {
            _bookData[kept] = std::move(_bookData[i]);
            _bookList[kept] = std::move(_bookList[i]);
            _epubLocations[kept] = std::move(_epubLocations[i]);
        }
        ++kept;
    }
    const auto end = static_cast<std::ptrdiff_t>(kept);
    _bookData.erase(_bookData.begin() + end, _bookData.end());
    _bookList.erase(_bookList.begin() + end, _bookList.end());
    _epubLocations.erase(_epubLocations.begin() + end, _epubLocations.end());
    _sharedBookList = nullptr;
    return removed;
}

std::optional<std::size_t> Catalogue::indexOf(const BookInfoPtr& book) const
{
    const auto found = std::find(_bookList.begin(), _bookList.end(), book);
    if (found == _bookList.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - _bookList.begin());
}

bool Catalogue::replaceEntry(const BookInfoPtr& book, Value entry)
{
    std::scoped_lock lock(_mutex);
    const auto index = indexOf(book);
    if (!index)
        return false;
    _bookData[*index] = std::move(entry);
    return true;
}

std::size_t Catalogue::count() const
{
    std::scoped_lock lock(_mutex);
    return _bookData.size();
}

Value Catalogue::bookData() const
{
    std::scoped_lock lock(_mutex);
    return _bookData;
}

std::shared_ptr<const std::vector<BookInfoPtr>> Catalogue::bookList() const
{
    std::scoped_lock lock(_mutex);
    if (!_sharedBookList)
        _sharedBookList = std::make_shared<const std::vector<BookInfoPtr>>(_bookList);
    return _sharedBookList;
}

BookInfoPtr Catalogue::lastBook() const
{
    std::scoped_lock lock(_mutex);
    return _bookList.empty() ? nullptr : _bookList.back();
}

std::vector<std::string> Catalogue::epubLocations() const
{
    std::scoped_lock lock(_mutex);
    return _epubLocations;
}

std::string Catalogue::knownNames() const
{
    std::scoped_lock lock(_mutex);
    return joined(_epubLocations, " ## ");
}

std::optional<Value> Catalogue::entryOf(const BookInfoPtr& book) const
{
    std::scoped_lock lock(_mutex);
    const auto index = indexOf(book);
    if (!index)
        return std::nullopt;
    return _bookData[*index];
}

bool Catalogue::holdsArchive(const std::string& epubPath) const
{
    std::scoped_lock lock(_mutex);
    return std::any_of(_bookData.begin(), _bookData.end(), [&epubPath](const Value& entry) {
        const auto stored = entryUnder(entry_keys::ePubPath, entry);
        return stored && stored->string() && *stored->string() == epubPath;
    });
}

}
