#include "epub/InspectionServer.hpp"

#include "base/Log.hpp"
#include "base/Numbers.hpp"
#include "base/Translation.hpp"
#include "catalogue/CatalogueEntry.hpp"
#include "confinement/HelperConfinement.hpp"
#include "confinement/HelperMessages.hpp"
#include "epub/EpubInspection.hpp"
#include "epub/InspectionMessages.hpp"
#include "store/ValueCoding.hpp"

#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace pagora {

namespace {

using namespace inspection_messages;

// Collects the reports of an inspection.
class ReplyingHub : public InspectionHub {
public:
    explicit ReplyingHub(LibraryFolders folders)
        : _folders(std::move(folders))
    {
    }

    const LibraryFolders& folders() const override { return _folders; }
    void addFaultyBook(const std::string& line) override { lines.emplace_back(line); }
    void set_bookInfo(BookInfoPtr book) override { record = std::move(book); }
    void set_epubPath(const std::string& path) override { epubPath = path; }

    Value::Array lines;
    BookInfoPtr record;
    std::optional<std::string> epubPath;

private:
    const LibraryFolders _folders;
};

void put(Value::Dictionary& message, const ScaledCover& cover)
{
    message.emplace(CoverSize, static_cast<std::int64_t>(cover.size));
    message.emplace(CoverSum, static_cast<std::int64_t>(cover.sum));
    if (cover.picture)
        message.emplace(CoverPicture, *cover.picture);
}

std::optional<ScaledCover> coverIn(const Value& message)
{
    if (!message.find(CoverSize))
        return std::nullopt;
    const auto* picture = message.find(CoverPicture);
    return ScaledCover { static_cast<std::uint64_t>(integerFrom(message.find(CoverSize))),
        static_cast<std::uint64_t>(integerFrom(message.find(CoverSum))),
        picture && picture->data() ? std::optional(*picture->data()) : std::nullopt };
}

class Server {
public:
    explicit Server(const LibraryFolders& folders)
        : _hub(folders)
        , _inspection(_hub)
    {
    }

    Value::Dictionary answerTo(const Value& question, FileDescriptor file)
    {
        const auto what = stringFrom(question.find(Question)).value_or("");
        Value::Dictionary answer;
        if (what == EmptyScratch) {
            _inspection.emptyScratch();
        } else if (what == CoverAhead) {
            if (const auto cover = prefetchCover(std::move(file)))
                put(answer, *cover);
        } else if (what == GetBookInfo) {
            inspect(question, std::move(file), answer);
        }
        return answer;
    }

private:
    void inspect(const Value& question, FileDescriptor file, Value::Dictionary& answer)
    {
        Value::Array logLines;
        _hub.lines.clear();
        _hub.record = nullptr;
        _hub.epubPath.reset();
        const auto cover = coverIn(question);
        const auto* stops = question.find(StopsOnErrors);
        BookInfoPtr book;
        {
            const LogCapture capture([&](const std::string& line) { logLines.emplace_back(line); });
            book = _inspection.getBookInfo(stringFrom(question.find(ArchiveName)).value_or(""), std::move(file),
                stops && stops->boolean() && !*stops->boolean() ? StopOnErrors::No : StopOnErrors::Yes,
                cover ? &*cover : nullptr);
        }
        answer.emplace(IsAccepted, book != nullptr);
        if (_hub.record)
            answer.emplace(Record, entryFromBook(*_hub.record));
        if (_hub.epubPath)
            answer.emplace(EpubPath, *_hub.epubPath);
        answer.emplace(Lines, std::move(_hub.lines));
        answer.emplace(LogLines, std::move(logLines));
    }

    ReplyingHub _hub;
    EpubInspection _inspection;
};

// Translations are loaded on first use, which must happen before the process is confined.
void loadTexts()
{
    startTranslation();
    static_cast<void>(_("epub is too large to be opened safely"));
}

}

int serveInspections(int count, char** arguments)
{
    loadTexts();
    LibraryFolders folders;
    HelperConfinement confinement { {}, InspectionLimits().memoryBytes, BookLimits().extractedBytes };
    if (count > 1)
        confinement.memoryBytes = static_cast<std::uint64_t>(integerValue(arguments[1]));
    if (count > 4) {
        folders._dataPath = arguments[2];
        folders._booksPath = arguments[4];
        confinement.folders = { arguments[2], arguments[3] };
    }
    const auto walls = confineHelper(confinement);
    if (!walls.files || !walls.calls)
        log("pagora-inspect is not confined by this kernel");
    Server server(folders);
    MessageReader reader;
    for (;;) {
        const auto state = reader.readSome(STDIN_FILENO);
        if (state == MessageReader::State::Gone)
            return EXIT_SUCCESS;
        if (state == MessageReader::State::Waiting)
            continue;
        allowProcessorTime(InspectionLimits().processorSeconds + 1);
        const auto question = decodeValue(reader.takeMessage());
        auto file = reader.takeFile();
        if (!question)
            return EXIT_FAILURE;
        if (!writeMessage(STDIN_FILENO, encodeValue(server.answerTo(*question, std::move(file)))))
            return EXIT_FAILURE;
    }
}

}
