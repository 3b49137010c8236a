#include "epub/InspectionProcess.hpp"

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "base/Unicode.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "epub/InspectionMessages.hpp"
#include "files/Files.hpp"
#include "store/ValueCoding.hpp"

#include <algorithm>
#include <sys/stat.h>
#include <utility>

namespace pagora {

namespace {

using namespace inspection_messages;
using std::chrono::seconds;

constexpr const char* coverProgram = "pagora-inspect";

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Sanitizers multiply time and memory.
constexpr unsigned scale = 20;
#else
constexpr unsigned scale = 1;
#endif

HelperBudget budget(const InspectionLimits& limits, unsigned processorSeconds)
{
    return { seconds(processorSeconds * scale), seconds(limits.seconds), limits.residentBytes * scale };
}

// Identifies the folder at a path. The process cannot access a folder that has replaced the original.
std::string identity(const std::string& folder)
{
    struct stat info { };
    if (::stat(folder.c_str(), &info) != 0)
        return {};
    return std::to_string(info.st_dev) + ":" + std::to_string(info.st_ino);
}

// Returns whether a record refers only to files of its own book.
bool isSound(const BookInfo& book, const std::string& booksPath)
{
    const auto folder = book.bookPath().value_or("");
    const auto type = book.type().value_or("");
    const auto files = book.filePaths();
    const auto content = book.content().value_or(Value::Array {});
    return isPathInside(folder, booksPath) && (type == "default" || type == "fixed" || type == "x-ibook")
        && std::all_of(
            files.begin(), files.end(), [&](const auto& file) { return isPathInside(*file.string(), folder); })
        && std::all_of(content.begin(), content.end(), [](const auto& entry) {
               const auto* src = entry.find("src");
               const auto* text = entry.find("text");
               const auto* level = entry.find("level");
               return src && src->string() && text && text->string() && level && level->integer();
           });
}

void put(Value::Dictionary& question, const ScaledCover& cover)
{
    question.emplace(CoverSize, static_cast<std::int64_t>(cover.size));
    question.emplace(CoverSum, static_cast<std::int64_t>(cover.sum));
    if (cover.picture)
        question.emplace(CoverPicture, *cover.picture);
}

Value::Array arrayAt(const Value& answer, const char* key)
{
    const auto* value = answer.find(key);
    return value && value->array() ? *value->array() : Value::Array {};
}

}

InspectionProcess::InspectionProcess(
    InspectionHub& hub, std::function<bool()> isEnded, const InspectionLimits& limits, std::string program)
    : _mainController(hub)
    , _isEnded(isEnded)
    , _limits(limits)
    , _process(std::move(program), std::move(isEnded))
{
}

void InspectionProcess::prepare()
{
    const auto& folders = _mainController.folders();
    const auto spare = EpubInspection::spareFolderOf(folders);
    createFolder(folders._dataPath);
    createFolder(spare);
    // The process does not read the identities. They restart it when they change.
    _process.setArguments({ std::to_string(_limits.memoryBytes), folders._dataPath, spare, folders._booksPath,
        identity(folders._dataPath), identity(spare) });
}

std::optional<Value> InspectionProcess::ask(Value::Dictionary question, FileDescriptor archive)
{
    prepare();
    const auto answer
        = _process.ask(encodeValue(std::move(question)), archive.get(), budget(_limits, _limits.processorSeconds));
    return answer ? decodeValue(*answer) : std::nullopt;
}

BookInfoPtr InspectionProcess::getBookInfo(
    const std::string& archivePath, StopOnErrors stopOnErrors, const ScaledCover* prefetchedCover)
{
    Value::Dictionary question { { Question, GetBookInfo }, { ArchiveName, lastPathComponent(archivePath) },
        { StopsOnErrors, stopOnErrors == StopOnErrors::Yes } };
    if (prefetchedCover)
        put(question, *prefetchedCover);
    const auto answer = ask(std::move(question), openFile(archivePath));
    if (_isEnded())
        return nullptr;
    if (answer && answer->find(IsAccepted))
        return take(*answer, archivePath);
    reject(archivePath,
        _process.couldStart() ? _("epub is too large to be opened safely")
                              : _("epub can not be read (the program that inspects books can not be started)"));
    return nullptr;
}

void InspectionProcess::reject(const std::string& archivePath, const std::string& reason)
{
    _mainController.addFaultyBook(validUtf8(lastPathComponent(archivePath)) + " --> " + reason);
}

BookInfoPtr InspectionProcess::take(const Value& answer, const std::string& archivePath)
{
    for (const auto& line : arrayAt(answer, LogLines))
        log(stringFrom(&line).value_or(""));
    if (const auto folder = stringFrom(answer.find(EpubPath)))
        _mainController.set_epubPath(*folder);
    const auto* record = answer.find(Record);
    auto book = record ? bookFromEntry(*record) : nullptr;
    if (book && !isSound(*book, _mainController.folders()._booksPath)) {
        reject(archivePath, _("epub is too large to be opened safely"));
        return nullptr;
    }
    if (book) {
        book->setEpubPath(archivePath);
        _mainController.set_bookInfo(book);
    }
    for (const auto& line : arrayAt(answer, Lines))
        _mainController.addFaultyBook(validUtf8(stringFrom(&line).value_or("")));
    return booleanFrom(answer.find(IsAccepted)) ? book : nullptr;
}

void InspectionProcess::emptyScratch()
{
    if (!ask({ { Question, EmptyScratch } }, FileDescriptor()))
        makeEmptyFolder(_mainController.folders()._dataPath);
}

CoverProcess::CoverProcess(std::function<bool()> isEnded)
    : _process(coverProgram, std::move(isEnded))
{
}

std::optional<ScaledCover> CoverProcess::prefetchCover(const std::string& archivePath)
{
    const auto archive = openFile(archivePath);
    if (!archive)
        return std::nullopt;
    const auto bytes = _process.ask(encodeValue(Value::Dictionary { { Question, CoverAhead } }), archive.get(),
        budget({}, InspectionLimits().coverProcessorSeconds));
    const auto answer = bytes ? decodeValue(*bytes) : std::nullopt;
    if (!answer || !answer->find(CoverSize))
        return std::nullopt;
    const auto* picture = answer->find(CoverPicture);
    return ScaledCover { static_cast<std::uint64_t>(integerFrom(answer->find(CoverSize))),
        static_cast<std::uint64_t>(integerFrom(answer->find(CoverSum))),
        picture && picture->data() ? std::optional(*picture->data()) : std::nullopt };
}

}
