#include "epub/EpubInspection.hpp"

#include "base/Log.hpp"
#include "base/Path.hpp"
#include "base/Translation.hpp"
#include "base/Unicode.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "epub/ContainerParser.hpp"
#include "epub/ContentParser.hpp"
#include "epub/ExtractedMember.hpp"
#include "epub/HTMLParser.hpp"
#include "epub/OPFParser.hpp"
#include "files/Archive.hpp"
#include "files/Files.hpp"
#include "store/ValueCoding.hpp"

#include <algorithm>

namespace pagora {

namespace {

constexpr auto mimetypeMember = "mimetype";
constexpr auto displayOptionsMember = "META-INF/com.apple.ibooks.display-options.xml";
constexpr auto encryptionMember = "META-INF/encryption.xml";
constexpr auto containerMember = "META-INF/container.xml";

bool contains(const std::string& text, std::string_view part)
{
    return text.find(part) != std::string::npos;
}

bool isAscii(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
}

std::string valueOr(const OPFParser& package, const std::string& key, const std::string& otherwise)
{
    const auto found = package.metaDict().find(key);
    return found == package.metaDict().end() ? otherwise : found->second;
}

// Decodes the percent escapes of a reference. Returns it unchanged if the result is not UTF-8 or contains a NUL.
std::string decodedReference(const std::string& reference)
{
    const auto decoded = replacingPercentEscapes(reference);
    return decoded && decoded->find('\0') == std::string::npos ? *decoded : reference;
}

// The inspection of one archive.
class Inspection {
public:
    Inspection(InspectionHub& hub, SpareFiles* spare, const std::string& archivePath, FileDescriptor file,
        StopOnErrors stopOnErrors, const ScaledCover* cover)
        : _mainController(hub)
        , _spare(spare)
        , _dataPath(hub.folders()._dataPath)
        , _archivePath(archivePath)
        , _archiveName(lastPathComponent(archivePath))
        , _archiveFile(std::move(file))
        , _stopOnErrors(stopOnErrors)
        , _prefetchedCover(cover)
    {
    }

    BookInfoPtr run();

private:
    // The stages of the inspection. Each returns false if the archive is rejected.
    bool openArchive();
    bool checkMimetype();
    bool checkEncryption();
    bool findPackage();
    bool readPageSize(const OPFParser& package, BookInfo& book);

    void layOutFolders(const std::string& packagePath);
    std::optional<Data> readCover(const OPFParser& package);
    Value::Array contentFiles(const OPFParser& package) const;
    // Returns nullopt if a limit is exceeded.
    std::optional<Value::Array> readContents(const OPFParser& package);
    std::optional<std::string> extracted(const std::string& href);

    void report(const std::string& reason) const
    {
        _mainController.addFaultyBook(validUtf8(_archiveName) + " --> " + validUtf8(reason));
    }
    bool isOutOfRoom() const { return _archive && (_archive->isOutOfRoom() || _archive->isDiskFull()); }
    // Rejects the archive if extraction failed for lack of disk space, because its record would stay incomplete.
    bool rejectForRoom() const
    {
        if (!_archive->isDiskFull())
            return rejectTooLarge();
        report(_("epub can not be read (the disk is full or can not be written)"));
        return false;
    }
    // Called when a limit was exceeded. Nothing of the book is used.
    bool rejectTooLarge() const
    {
        report(_("epub is too large to be opened safely"));
        return false;
    }
    // Returns false if the inspection ends with this problem.
    bool reject(const std::string& reason) const
    {
        report(reason);
        return _stopOnErrors == StopOnErrors::No;
    }
    std::string dataFile(const std::string& member) const { return appendingPathComponent(_dataPath, member); }

    InspectionHub& _mainController;
    SpareFiles* _spare;
    const std::string _dataPath;
    const std::string _archivePath;
    const std::string _archiveName;
    FileDescriptor _archiveFile;
    const StopOnErrors _stopOnErrors;
    const ScaledCover* _prefetchedCover;
    std::optional<Archive> _archive;
    std::string _type = "default";
    std::string _packageFile;
    std::string _packageFolder;
    std::string _bookFolder;
    std::string _contentBase;
};

bool Inspection::openArchive()
{
    auto opened = Archive::open(std::move(_archiveFile));
    // A file that is not an archive has no members and is rejected later for that reason.
    if (!opened)
        return opened.reason() != ArchiveProblem::PastBounds || rejectTooLarge();
    _archive = std::move(*opened);
    _archive->setRoom(BookLimits().extractedBytes);
    _archive->extract(
        { mimetypeMember, displayOptionsMember, encryptionMember, containerMember }, _dataPath, {}, _spare);
    return !isOutOfRoom() || rejectForRoom();
}

bool Inspection::checkMimetype()
{
    const auto path = dataFile(mimetypeMember);
    if (!fileExists(path) && !reject(_("epub is corrupted (mimetype not identified)")))
        return false;
    const auto mimetype = readFile(path);
    const auto* const notAnEpub = _("file is not a ePub ( see the mimetype )");
    // An unreadable or non-ASCII media type is treated as "x-ibooks".
    if (!mimetype || !isAscii(*mimetype) || contains(*mimetype, "x-ibooks")) {
        _type = "x-ibook";
        return reject(notAnEpub);
    }
    return contains(*mimetype, "epub") || reject(notAnEpub);
}

bool Inspection::checkEncryption()
{
    if (fileExists(dataFile(encryptionMember)) && !reject(_("epub is crypted by DRM")))
        return false;
    if (_type == "default") {
        const auto options = readFile(dataFile(displayOptionsMember)).value_or("");
        if (contains(options, "fixed-layout") && contains(options, "true"))
            _type = "fixed";
    }
    return true;
}

bool Inspection::findPackage()
{
    const auto container = dataFile(containerMember);
    if (!fileExists(container)) {
        if (!reject(_("epub is corrupted (can't open container.xml)")))
            return false;
    } else if (!isReadable(container) && !reject(_("epub can not be read (permissions denied)"))) {
        return false;
    }
    ContainerParser parser(Url::file(container));
    parser.parse();
    if (parser.isPastBounds())
        return rejectTooLarge();
    if (!parser.opfFile()) {
        // The rest of the inspection needs the package document.
        report(_("epub is corrupted (content opf-file not found)"));
        return false;
    }
    auto file
        = extractedMember(_archive ? &*_archive : nullptr, *parser.opfFile(), _dataPath, MemberName::Exact, _spare);
    layOutFolders(*parser.opfFile());
    if (isOutOfRoom())
        return rejectForRoom();
    if (!file && !reject(_("epub is corrupted (can't open content opf-file)")))
        return false;
    _packageFile = file.value_or("");
    return true;
}

void Inspection::layOutFolders(const std::string& packagePath)
{
    const auto slash = packagePath.rfind('/');
    _packageFolder = slash == std::string::npos ? std::string() : packagePath.substr(0, slash);
    auto bookName = deletingPathExtension(_archiveName);
    // Such names refer to the folder of all books or its parent.
    if (bookName.empty() || bookName == "." || bookName == "..")
        bookName = _archiveName;
    // Pages are loaded by URL, so the folder's name must be valid text.
    _bookFolder = appendingPathComponent(_mainController.folders()._booksPath, validUtf8(bookName));
    _contentBase = appendingPathComponent(_bookFolder, _packageFolder);
    _mainController.set_epubPath(_bookFolder);
    log("Book filePath: " + _contentBase);
}

std::optional<std::string> Inspection::extracted(const std::string& href)
{
    return extractedMember(_archive ? &*_archive : nullptr, appendingPathComponent(_packageFolder, href), _dataPath,
        MemberName::Reference, _spare);
}

std::optional<Data> Inspection::readCover(const OPFParser& package)
{
    const auto href = valueOr(package, "cover", "cover.jpg");
    log("subfolder - " + _packageFolder);
    log("cover file - " + appendingPathComponent(_packageFolder, href));
    const auto file = extracted(href);
    return file ? coverPicture(*file, _prefetchedCover) : defaultCoverPicture();
}

bool Inspection::readPageSize(const OPFParser& package, BookInfo& book)
{
    // The last page in reading order represents all pages.
    const auto href = package.fileList().empty() ? std::string() : package.fileList().back();
    const auto page = href.empty() ? std::nullopt : extracted(href);
    if (isOutOfRoom())
        return rejectForRoom();
    if (!page) {
        report(
            formatted(_("can't open first content file '%s'"), appendingPathComponent(_packageFolder, href).c_str()));
        return false;
    }
    HTMLParser parser(Url::file(*page));
    parser.parse();
    if (parser.isPastBounds())
        return rejectTooLarge();
    book.setFixedWidth(parser.viewportWidth());
    book.setFixedHeight(parser.viewportHeight());
    return true;
}

Value::Array Inspection::contentFiles(const OPFParser& package) const
{
    Value::Array paths;
    for (const auto& href : package.fileList()) {
        auto path = appendingPathComponent(_contentBase, decodedReference(href));
        // ".." may lead to another folder of the book, but not to other books or the user's files.
        if (isPathInside(path, _bookFolder))
            paths.emplace_back(std::move(path));
    }
    return paths;
}

std::optional<Value::Array> Inspection::readContents(const OPFParser& package)
{
    const auto file = extracted(valueOr(package, "tocfile", "toc.ncx"));
    if (isOutOfRoom())
        return std::nullopt;
    if (!file)
        return Value::Array {};
    ContentParser parser(Url::file(*file));
    parser.parse();
    if (parser.isPastBounds())
        return std::nullopt;
    Value::Array content;
    std::size_t bytes = 0;
    for (const auto& entry : parser.contentList()) {
        const auto* src = entry.find("src");
        if (!src || !src->string())
            continue;
        auto target = appendingPathComponent(_contentBase, decodedReference(*src->string()));
        bytes += target.size();
        if (bytes > BookLimits().entryBytes)
            return std::nullopt;
        auto resolved = *entry.dictionary();
        resolved.insert_or_assign("src", std::move(target));
        content.emplace_back(std::move(resolved));
    }
    return content;
}

BookInfoPtr Inspection::run()
{
    if (!openArchive() || !checkMimetype() || !checkEncryption() || !findPackage())
        return nullptr;
    OPFParser package(Url::file(_packageFile));
    package.parse();
    if (package.isPastBounds()) {
        rejectTooLarge();
        return nullptr;
    }
    const auto cover = readCover(package);
    if (isOutOfRoom()) {
        rejectForRoom();
        return nullptr;
    }

    auto book = std::make_shared<BookInfo>();
    _mainController.set_bookInfo(book);
    book->setEpubPath(_archivePath);
    book->setType(_type);
    book->setTitle(valueOr(package, "title", "<not found>"));
    book->setAuthor(valueOr(package, "creator", "<unknown>"));
    book->setIsbn(valueOr(package, "isbn", "<not found>"));
    book->setImgData(cover);
    book->setBookPath(_bookFolder);
    if (_type != "default" && !readPageSize(package, *book))
        return nullptr;
    auto content = readContents(package);
    if (content) {
        book->setFilePaths(contentFiles(package));
        book->setContent(std::move(*content));
    }
    if (!content || encodeValue(entryFromBook(*book)).size() > BookLimits().entryBytes) {
        // The list is too large to store.
        book->setFilePaths(Value::Array {});
        book->setContent(Value::Array {});
        isOutOfRoom() ? rejectForRoom() : rejectTooLarge();
        return nullptr;
    }
    return book;
}

}

BookInfoPtr EpubInspection::getBookInfo(
    const std::string& archivePath, StopOnErrors stopOnErrors, const ScaledCover* prefetchedCover)
{
    return getBookInfo(archivePath, openFile(archivePath), stopOnErrors, prefetchedCover);
}

BookInfoPtr EpubInspection::getBookInfo(const std::string& archivePath, FileDescriptor archive,
    StopOnErrors stopOnErrors, const ScaledCover* prefetchedCover)
{
    auto* const spare = _spare ? &*_spare : nullptr;
    return Inspection(_mainController, spare, archivePath, std::move(archive), stopOnErrors, prefetchedCover).run();
}

std::string EpubInspection::spareFolderOf(const LibraryFolders& folders)
{
    return appendingPathComponent(deletingLastPathComponent(folders._dataPath), "_spare");
}

void EpubInspection::emptyScratch()
{
    const auto& scratch = _mainController.folders()._dataPath;
    const auto spareFolder = spareFolderOf(_mainController.folders());
    if (!_spare || _spare->path() != spareFolder)
        _spare.emplace(spareFolder);
    _spare->makeEmptyFolder(scratch);
}

}
