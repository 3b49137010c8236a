#include "base/Bounds.hpp"
#include "epub/InspectionProcess.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/FakeInspectionHub.hpp"
#include "tests/support/StoredArchive.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

namespace pagora {

namespace {

namespace fs = std::filesystem;
using test::EpubBuilder;
using test::StoredArchive;
using Lines = std::vector<std::string>;

enum class Outcome { Refused, ComesIn };

// A book that tries to exhaust resources.
struct Attack {
    const char* name;
    Outcome outcome;
    // Writes the archive.
    std::function<void(const std::string& path)> write;
};

std::string repeated(std::size_t count, const std::string& text)
{
    std::string all;
    all.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string numbered(std::size_t count, const std::string& before, const std::string& after)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all.append(before).append(std::to_string(i)).append(after);
    return all;
}

// Converts ASCII to UTF-16.
std::string wide(const std::string& text)
{
    std::string result = "\xFE\xFF";
    for (const char c : text)
        result.append(1, '\0').append(1, c);
    return result;
}

// Returns incompressible bytes.
std::string noise(std::size_t size)
{
    std::string bytes;
    bytes.reserve(size);
    for (std::uint64_t number = 88'172'645'463'325'252ull; bytes.size() < size;) {
        number ^= number << 13;
        number ^= number >> 7;
        number ^= number << 17;
        bytes += static_cast<char>(number >> 32);
    }
    return bytes;
}

std::function<void(const std::string&)> book(const std::string& member, const std::function<std::string()>& bytes)
{
    return [=](const std::string& path) { EpubBuilder().member(member, bytes()).write(path); };
}

std::function<void(const std::string&)> contents(const std::function<std::string()>& document)
{
    return book("OEBPS/toc.ncx", document);
}

std::function<void(const std::string&)> package(const std::function<std::string()>& document)
{
    return book("OEBPS/content.opf", document);
}

std::function<void(const std::string&)> cover(const std::function<std::string()>& picture)
{
    return book("OEBPS/images/cover.jpg", picture);
}

std::function<void(const std::string&)> page(const std::function<std::string()>& document)
{
    return [=](const std::string& path) {
        EpubBuilder().fixedLayout(600, 800).member("OEBPS/chapter3.xhtml", document()).write(path);
    };
}

std::string svg(const std::string& content, const std::string& size = "width='60' height='80'")
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' " + size + ">" + content
        + "</svg>";
}

// The parser compares all pairs.
std::string namespaces(std::size_t elements)
{
    return repeated(elements, "<e" + numbered(900, " xmlns:n", "='u'") + "/>");
}

std::string manyReferences()
{
    std::string content = "<g id='g0'><rect width='9' height='9'/></g>";
    for (int i = 1; i < 12; ++i)
        content += "<g id='g" + std::to_string(i) + "'>"
            + repeated(10, "<use xlink:href='#g" + std::to_string(i - 1) + "'/>") + "</g>";
    return svg(content + "<use xlink:href='#g11'/>");
}

std::string entities(int levels)
{
    std::string document = "<!DOCTYPE c [<!ENTITY e0 'lol'>";
    for (int i = 1; i < levels; ++i)
        document += "<!ENTITY e" + std::to_string(i) + " '" + repeated(10, "&e" + std::to_string(i - 1) + ";") + "'>";
    return document + "]><c>&e" + std::to_string(levels - 1) + ";</c>";
}

// An archive whose directory refers to the same bytes many times.
void writeOverlapping(const std::string& path)
{
    auto bytes = StoredArchive().add("a", std::string(1'000'000, 'x')).bytes();
    const auto end = bytes.rfind("PK\5\6");
    const auto entry = bytes.substr(bytes.rfind("PK\1\2"), end - bytes.rfind("PK\1\2"));
    constexpr std::size_t count = 60'000;
    auto last = bytes.substr(end);
    bytes.resize(end);
    bytes += repeated(count - 1, entry);
    const auto put = [&](std::size_t at, std::uint64_t number, int size) {
        for (int i = 0; i < size; ++i, number >>= 8)
            last[at + static_cast<std::size_t>(i)] = static_cast<char>(number & 0xFF);
    };
    put(8, count, 2);
    put(10, count, 2);
    put(12, count * entry.size(), 4);
    test::makeFile(path, bytes + last);
}

std::vector<Attack> attacks()
{
    constexpr auto Refused = Outcome::Refused;
    constexpr auto ComesIn = Outcome::ComesIn;
    return
    {
        { "a choice of 200,000 names in the package document", Refused,
            package([] { return "<!DOCTYPE l [<!ATTLIST l a (v" + numbered(200'000, "|v", "") + ") 'v'>]><l/>"; }) },
            { "a choice of 500,000 names in the contents", Refused, contents([] {
                 return "<!DOCTYPE l [<!ATTLIST l a (v" + numbered(500'000, "|v", "") + ") 'v'>]><l/>";
             }) },
            { "200,000 declared entities", Refused,
                contents([] { return "<!DOCTYPE l [" + numbered(200'000, "<!ENTITY e", " 'x'>") + "]><l/>"; }) },
            { "200,000 declared elements", Refused,
                contents([] { return "<!DOCTYPE l [" + numbered(200'000, "<!ELEMENT e", " ANY>") + "]><l/>"; }) },
            { "200,000 declared attributes of one element", Refused, contents([] {
                 return "<!DOCTYPE l [<!ATTLIST l " + numbered(200'000, " a", " CDATA 'x'") + ">]><l/>";
             }) },
            { "a content model of 200,000 names", Refused,
                contents([] { return "<!DOCTYPE l [<!ELEMENT l (a" + numbered(200'000, "|a", "") + ")>]><l/>"; }) },
            { "a content model 100,000 deep", Refused, contents([] {
                 return "<!DOCTYPE l [<!ELEMENT l " + std::string(100'000, '(') + "a" + std::string(100'000, ')')
                     + ">]><l/>";
             }) },
            { "declarations without an end", Refused,
                contents([] { return "<!DOCTYPE l [" + repeated(4'000'000, "<!-- "); }) },
            { "80,000 attributes of one element in UTF-16", Refused, page([] {
                 auto document = wide("<html" + numbered(80'000, " a", "='~'") + "/>");
                 return test::replaced(document, std::string("\0~", 2), "<<");
             }) },
            { "250 elements of 9,990 attributes", Refused, contents([] {
                 return "<ncx>" + repeated(250, "<e" + numbered(9'990, " a", "=''") + "/>") + "</ncx>";
             }) },
            { "elements of 900 namespaces", ComesIn, contents([] { return "<d>" + namespaces(1'500) + "</d>"; }) },
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
            // Sanitizers have a larger budget.
            { "elements of 900 namespaces in every document", Refused,
                [](const std::string& path) {
                    const auto elements = namespaces(2'600) + "</d>";
                    EpubBuilder()
                        .fixedLayout(600, 800)
                        .member("noise", noise(700'000))
                        .member("META-INF/container.xml", "<d><rootfile full-path='OEBPS/content.opf'/>" + elements)
                        .member("OEBPS/content.opf",
                            "<d><manifest><item id='p' href='p'/><item id='ncx' href='toc.ncx'/></manifest>"
                            "<spine toc='ncx'><itemref idref='p'/></spine>"
                                + elements)
                        .member("OEBPS/p", "<d>" + elements)
                        .member("OEBPS/toc.ncx", "<d>" + elements)
                        .write(path);
                } },
            { "a viewport of 10,000,000 commas", Refused, page([] {
                 return "<html><meta name='viewport' content='" + std::string(10'000'000, ',') + "'/></html>";
             }) },
#endif
            { "long paths in the reading order", Refused, package([] {
                 return "<package><manifest><item id='i' href='" + std::string(4'000, 'n') + "'/></manifest><spine>"
                     + repeated(9'000, "<itemref idref='i'/>") + "</spine></package>";
             }) },
            { "long labels", Refused, contents([] {
                 return "<ncx>" + repeated(400, std::string(60'000, 'l') + "<content src='a'/>") + "</ncx>";
             }) },
            { "long targets", Refused, contents([] {
                 return "<ncx>" + repeated(9'000, "<content src='" + std::string(3'000, 't') + "'/>") + "</ncx>";
             }) },
            { "a title of 10 MB", Refused, package([] {
                 return "<package><metadata><dc:title>" + std::string(10'000'000, 't')
                     + "</dc:title></metadata></package>";
             }) },
            { "patterns that ask for all of a large archive", Refused,
                [](const std::string& path) {
                    auto builder
                        = EpubBuilder()
                              .member("noise", noise(4'000'000))
                              .member("OEBPS/content.opf",
                                  "<package><metadata><meta name='cover' content='c'/></metadata><manifest><item "
                                  "id='c' "
                                  "href='b*' "
                                  "media-type='image/png'/><item id='ncx' href='*'/></manifest><spine/></package>");
                    for (int i = 0; i < 20; ++i)
                        builder.member("OEBPS/b" + std::to_string(i), std::string(30'000'000, '\0'));
                    builder.write(path);
                } },
            { "a pattern of 4,000 stars over 3,000 names", ComesIn,
                [](const std::string& path) {
                    auto builder = EpubBuilder().member("OEBPS/content.opf",
                        "<package><manifest><item id='ncx' href='" + repeated(2'000, "*a")
                            + "b'/></manifest><spine/></package>");
                    for (int i = 0; i < 3'000; ++i)
                        builder.member("OEBPS/" + std::string(200, 'a') + std::to_string(i), "x");
                    builder.write(path);
                } },
            { "elements 19,990 deep", ComesIn,
                contents([] { return repeated(19'990, "<a>") + repeated(19'990, "</a>"); }) },
            { "elements 1,000,000 deep", Refused, contents([] { return repeated(1'000'000, "<a>"); }) },
            { "4,000,000 elements", Refused, contents([] { return "<n>" + repeated(4'000'000, "<a/>") + "</n>"; }) },
            { "entities of entities", Refused, contents([] { return entities(30); }) },
            { "one entity 100,000 times", Refused, contents([] {
                 return "<!DOCTYPE l [<!ENTITY e '" + std::string(10'000, 'x') + "'>]><l>" + repeated(100'000, "&e;")
                     + "</l>";
             }) },
            { "entities in attributes", ComesIn, contents([] {
                 return "<!DOCTYPE l [<!ENTITY e '" + std::string(10'000, 'x') + "'>]><l a='" + repeated(10'000, "&e;")
                     + "'/>";
             }) },
            { "parameter entities of parameter entities", ComesIn,
                contents([] { return std::string("<!DOCTYPE l [<!ENTITY % a 'x'><!ENTITY % b '%a;%a;'>%b;]><l/>"); }) },
            { "a file as an entity", ComesIn,
                contents([] { return std::string("<!DOCTYPE l [<!ENTITY e SYSTEM '/dev/zero'>]><l>&e;</l>"); }) },
            { "a comment of 31 MB", ComesIn,
                contents([] { return "<!--" + std::string(31'000'000, 'c') + "--><n/>"; }) },
            { "a CDATA section of 31 MB", ComesIn,
                contents([] { return "<n><![CDATA[" + std::string(31'000'000, 'c') + "]]></n>"; }) },
            { "an attribute of 31 MB", ComesIn,
                contents([] { return "<n a='" + std::string(31'000'000, 'c') + "'/>"; }) },
            { "a name of 31 MB", ComesIn, contents([] { return "<" + std::string(31'000'000, 'c') + "/>"; }) },
            { "a tag that does not end", ComesIn, contents([] { return "<n " + std::string(31'000'000, ' '); }) },
            { "5,000,000 processing instructions", ComesIn,
                contents([] { return "<n>" + repeated(5'000'000, "<?p?>") + "</n>"; }) },
            { "3,000,000 line breaks in a label", ComesIn,
                contents([] { return "<n>" + std::string(3'000'000, '\n') + "</n>"; }) },
            { "900,000 package documents in 37 MB", Refused,
                book("META-INF/container.xml",
                    [] { return "<c>" + repeated(900'000, "<rootfile full-path='OEBPS/content.opf'/>") + "</c>"; }) },
            { "99,000 items of one name", ComesIn, package([] {
                 return "<package><manifest>" + repeated(99'000, "<item id='i' href='h'/>")
                     + "</manifest><spine><itemref idref='i'/></spine></package>";
             }) },
            { "a viewport of 31 MB", ComesIn, page([] {
                 return "<html><meta name='viewport' content='" + std::string(31'000'000, '=') + "'/></html>";
             }) },
            { "a viewport of 100,000 commas", ComesIn, page([] {
                 return "<html><meta name='viewport' content='" + std::string(100'000, ',') + "'/></html>";
             }) },
            { "a mimetype of 60 MB", ComesIn,
                [](const std::string& path) {
                    EpubBuilder()
                        .member("noise", noise(600'000))
                        .member("mimetype", "epub" + std::string(60'000'000, ' '))
                        .write(path);
                } },
            { "an SVG cover whose filter does not end", ComesIn, cover([] {
                 return svg("<filter id='f'><feTurbulence baseFrequency='.9' numOctaves='99999'/>"
                            "<feGaussianBlur stdDeviation='999'/></filter><rect width='9999' height='9999' "
                            "filter='url(#f)'/>",
                     "width='9999' height='9999'");
             }) },
            { "an SVG cover of multiplied references", ComesIn, cover(manyReferences) },
            { "an SVG cover that names a file", ComesIn,
                cover([] { return svg("<image xlink:href='file:///dev/zero' width='60' height='80'/>"); }) },
            { "a cover that claims 60,000 by 60,000 pixels", ComesIn, cover([] {
                 auto gif = test::picture(1, 1, "bmp");
                 gif.replace(18, 8, std::string("\x60\xEA\0\0\x60\xEA\0\0", 8));
                 return gif;
             }) },
            { "a cover of 24 million pixels", ComesIn, cover([] { return test::picture(6'000, 4'000, "png", 128); }) },
            { "65,000 members", ComesIn,
                [](const std::string& path) {
                    StoredArchive archive;
                    archive.add("mimetype", "epub").add("META-INF/container.xml", "<rootfile full-path='p'/>");
                    archive.add("p", "<package/>");
                    for (int i = 0; i < 65'000; ++i)
                        archive.add("member" + std::to_string(i));
                    archive.write(path);
                } },
            { "60,000 entries for the same bytes", Refused, writeOverlapping },
            { "500 MB of zeros", Refused,
                [](const std::string& path) {
                    EpubBuilder().member("z", std::string(500'000'000, '\0')).write(path);
                } },
            { "names that fall together", Refused,
                [](const std::string& path) {
                    StoredArchive archive;
                    for (int i = 0; i < 30'000; ++i) {
                        std::string name;
                        for (int bit = 0; bit < 15; ++bit)
                            name += i >> bit & 1 ? "Ab" : "BA";
                        archive.add(name);
                    }
                    archive.write(path);
                } },
            { "3,000 damaged members that a pattern asks for", ComesIn, [](const std::string& path) {
                 auto builder = EpubBuilder().member(
                     "OEBPS/content.opf", "<package><manifest><item id='ncx' href='d*'/></manifest><spine/></package>");
                 for (int i = 0; i < 3'000; ++i)
                     builder.member("OEBPS/d" + std::to_string(i), noise(100) + std::string(30'000, 'd'));
                 builder.write(path);
                 auto bytes = test::contentsOf(path);
                 for (auto at = bytes.find("OEBPS/d"); at != std::string::npos && at < bytes.rfind("PK\1\2") / 2;
                      at = bytes.find("OEBPS/d", at + 1))
                     bytes.replace(at + 120, 4, "\xFF\xFF\xFF\xFF");
                 test::makeFile(path, bytes);
             } },
    };
}

std::uint64_t bytesBelow(const std::string& folder)
{
    std::uint64_t bytes = 0;
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(folder, ignored)) {
        if (entry.is_regular_file(ignored))
            bytes += entry.file_size(ignored);
    }
    return bytes;
}

class HostileBooks : public testing::TestWithParam<std::size_t> { };

}

// One attack in a new home folder. Expects that the book is rejected with one line or imported, within the limits.
TEST_P(HostileBooks, TakeNoMoreThanTheyMay)
{
    const auto attack = attacks().at(GetParam());
    const test::TemporaryFolder folder;
    test::FakeInspectionHub hub(folder.path());
    InspectionProcess process(hub, [] { return false; });
    const auto path = folder.path("Book.epub");
    // A child process starts with the peak memory of this process.
    std::ofstream("/proc/self/clear_refs") << 5;
    process.emptyScratch();
    attack.write(path);
    const auto record = process.getBookInfo(path, StopOnErrors::Yes);
    const auto used = process.end();
    const auto bytes = bytesBelow(folder.path("cache"));

    const Lines tooLarge { "Book.epub --> epub is too large to be opened safely" };
    EXPECT_EQ(hub.faultyBooks, attack.outcome == Outcome::Refused ? tooLarge : Lines {}) << attack.name;
    EXPECT_EQ(record != nullptr, attack.outcome == Outcome::ComesIn) << attack.name;
    constexpr InspectionLimits limits;
    constexpr std::chrono::seconds afterTheBudget { 2 };
    EXPECT_LE(used.processorTime, std::chrono::seconds(limits.processorSeconds) + afterTheBudget) << attack.name;
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(used.residentBytes, 200u << 20) << attack.name;
#endif
    EXPECT_LE(bytes, BookLimits().extractedBytes) << attack.name;
    if (std::getenv("PAGORA_FIGURES")) {
        std::printf("| %s | %llu kB | %.2f s | %llu MB | %llu kB | %s |\n", attack.name,
            static_cast<unsigned long long>(fs::file_size(path) / 1'000),
            static_cast<double>(used.processorTime.count()) / 1'000,
            static_cast<unsigned long long>(used.residentBytes >> 20), static_cast<unsigned long long>(bytes / 1'000),
            record ? "imported" : "rejected");
    }
}

INSTANTIATE_TEST_SUITE_P(Inspected, HostileBooks, testing::Range(std::size_t { 0 }, attacks().size()));

}
