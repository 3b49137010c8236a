#include "base/Path.hpp"
#include "base/Unicode.hpp"
#include "base/Url.hpp"
#include "epub/ContentsTargets.hpp"
#include "tests/fuzz/FuzzRun.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

using namespace pagora;
using test::require;

namespace {

void tryUrl(const std::string& text)
{
    if (const auto url = Url::fromString(text)) {
        require(url->text() == text && Url::fromString(url->withoutFragment().text()).has_value());
        require(url->lastPathComponent().find('/') == std::string::npos || url->path() == "/");
        require(url->fragment().has_value() == (text.find('#') != std::string::npos));
        require(url->scheme().find(':') == std::string::npos);
    }
    const auto file = Url::file("/" + text);
    require(file.isFile() && file.path() == "/" + text && Url::fromString(file.text()).has_value());

    const auto escaped = addingPercentEscapes(text);
    require(Url::fromString(escaped).has_value());
    require(isUtf8(text) ? replacingPercentEscapes(escaped) == text : !replacingPercentEscapes(escaped));
}

void tryPath(const std::string& path, const std::string& other)
{
    const auto normal = normalizedPath(path);
    require(normalizedPath(normal) == normal);
    if (isPathInside(appendingPathComponent("/folder/book", path), "/folder/book"))
        require(normalizedPath("/folder/book/" + path).starts_with("/folder/book/"));
    require(appendingPathComponent(deletingLastPathComponent(path), lastPathComponent(path)).size() <= path.size() + 1);
    require(pathExtension(path).size() + deletingPathExtension(path).size() <= lastPathComponent(path).size());
    require(trimmed(trimmed(path)) == trimmed(path));
    require(joined(split(path, '/'), "/") == path);
    require(hasWildcards(path) || matchesWildcards(other, path) == (other == path));
    require(matchesWildcards(other, "*") && matchesWildcards(path, path + "*") >= !hasWildcards(path));
}

// Returns an unpacked book whose contents file is in another folder than its package document.
const std::string& book()
{
    static const test::TemporaryFolder folder;
    static const std::string path = [] {
        const std::string book = folder.path("book");
        for (const char* const file : { "OEBPS/content.opf", "OEBPS/toc/toc.ncx", "OEBPS/toc/a.xhtml" })
            test::makeFile(book + "/" + file, "");
        return book;
    }();
    return path;
}

void tryTarget(const std::string& target)
{
    const std::string src = book() + "/OEBPS/" + target;
    const auto found = withTargetsFound({ Value::Dictionary { { "src", src }, { "text", "Entry" } } }, book());
    require(found.size() == 1 && *found[0].find("text")->string() == "Entry");
    const std::string path = *found[0].find("src")->string();
    require(path == src || isPathInside(path.substr(0, path.find('#')), book()));
}

}

// The input has three lines: a target and two paths.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const test::FuzzRun run;
    auto lines = split(test::inputBytes(data, size), '\n');
    lines.resize(3);
    tryUrl(lines[0]);
    tryPath(lines[0], lines[1]);
    require(isUtf8(composedForm(lines[0])) == isUtf8(lines[0]) && isUtf8(validUtf8(lines[0])));
    tryTarget(lines[0]);
    return 0;
}
