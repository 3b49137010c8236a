#include "base/Unicode.hpp"
#include "find/ChapterText.hpp"
#include "find/NoteText.hpp"
#include "tests/fuzz/FuzzRun.hpp"
#include "xml/MarkupScanner.hpp"

using namespace pagora;

namespace {

bool isWithin(std::string_view part, std::string_view whole)
{
    return part.empty() || (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const test::FuzzRun run;
    const std::string bytes(test::inputBytes(data, size));
    const auto document = markupFrom(bytes);
    test::require(isUtf8(document));

    // Each token starts after the previous one.
    MarkupScanner scanner(document);
    const char* end = document.data();
    while (const auto token = scanner.next()) {
        const bool isText = token->kind == MarkupToken::Kind::Text;
        const auto piece = isText ? token->text : token->name;
        test::require(isWithin(piece, document) && isWithin(token->attributes, document));
        test::require(piece.empty() || piece.data() >= end);
        end = piece.empty() ? end : piece.data() + piece.size();
        if (!isText)
            token->attribute("id");
    }

    // Only replaced references and ends of blocks make the text longer.
    const auto chapter = chapterText(bytes);
    test::require(isUtf8(chapter.text) && chapter.text.size() <= 4 * document.size());
    const auto note = noteText(document, "n");
    test::require(!note || (isUtf8(*note) && !note->empty() && note->size() <= maxNoteBytes));
    return 0;
}
