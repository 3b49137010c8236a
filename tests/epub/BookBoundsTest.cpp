#include "base/Bounds.hpp"
#include "epub/EpubInspection.hpp"
#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/FakeInspectionHub.hpp"
#include "tests/support/StoredArchive.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

using test::StoredArchive;
using Lines = std::vector<std::string>;

std::string repeated(std::size_t count, const std::string& text)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string nested(int depth)
{
    return repeated(static_cast<std::size_t>(depth), "<a>") + repeated(static_cast<std::size_t>(depth), "</a>");
}

// Returns entities that expand to `size` bytes of text, within the permitted number.
std::string expanding(std::size_t size)
{
    constexpr std::size_t piece = 1024;
    return "<!DOCTYPE html [<!ENTITY e '" + std::string(piece, 'x') + "'>]><html><p>" + repeated(size / piece, "&e;")
        + std::string(size % piece, 'x') + "</p></html>";
}

// A book of minimal size with the test's additions to its documents.
struct Book {
    std::string items = {};
    std::string references = {};
    std::string metadata = {};
    std::string contents = "<ncx/>";
    std::string page = "<html/>";
    std::string cover = {};
    bool fixed = false;

    StoredArchive archive() const
    {
        StoredArchive archive;
        archive.add("mimetype", "application/epub+zip");
        archive.add("META-INF/container.xml", "<c><rootfile full-path='book.opf'/></c>");
        archive.add("book.opf",
            "<package><metadata><meta name='cover' content='cover'/>" + metadata
                + "</metadata><manifest><item id='ncx' href='toc.ncx'/><item id='page' href='page.xhtml'/>"
                  "<item id='cover' href='cover.gif' media-type='image/gif'/>"
                + items + "</manifest><spine><itemref idref='page'/>" + references + "</spine></package>");
        archive.add("toc.ncx", contents).add("page.xhtml", page);
        if (!cover.empty())
            archive.add("cover.gif", cover);
        if (fixed)
            archive.add("META-INF/com.apple.ibooks.display-options.xml", "fixed-layout true");
        return archive;
    }
};

class BookBounds : public testing::Test {
protected:
    BookBounds() { createFolder(_hub.layout._dataPath); }

    // Returns the record. A rejected book has one line in the list of errors.
    BookInfoPtr inspect(const StoredArchive& archive)
    {
        _hub.faultyBooks.clear();
        removeItem(_hub.layout._dataPath);
        createFolder(_hub.layout._dataPath);
        auto book = EpubInspection(_hub).getBookInfo(archive.write(_folder.path("Book.epub")), StopOnErrors::Yes);
        EXPECT_EQ(_hub.faultyBooks, book ? Lines {} : Lines { "Book.epub --> epub is too large to be opened safely" });
        return book;
    }
    bool imports(const StoredArchive& archive) { return inspect(archive) != nullptr; }
    bool imports(const Book& book) { return imports(book.archive()); }

    test::TemporaryFolder _folder;
    test::FakeInspectionHub _hub { _folder.path() };
    const ArchiveLimits _archive;
    const XmlLimits _xml;
    const BookLimits _book;
};

StoredArchive withMembers(std::uint64_t count)
{
    auto archive = Book().archive();
    for (auto i = archive.count(); i < count; ++i)
        archive.add("member" + std::to_string(i));
    return archive;
}

// Returns an archive with members of these declared sizes, large enough for the permitted ratio.
StoredArchive withSizes(const std::vector<std::uint64_t>& sizes, std::size_t bytes = 0)
{
    auto archive = Book().archive().add("padding", std::string(bytes, 'x'));
    for (const auto size : sizes)
        archive.add("member" + std::to_string(archive.count()), {}, { .size = static_cast<std::uint32_t>(size) });
    return archive;
}

}

TEST_F(BookBounds, Members)
{
    EXPECT_TRUE(imports(withMembers(_archive.members)));
    EXPECT_FALSE(imports(withMembers(_archive.members + 1)));
}

TEST_F(BookBounds, BytesOfTheDirectory)
{
    constexpr std::size_t headerBytes = 46;
    constexpr std::size_t nameBytes = 4'000;
    auto archive = Book().archive();
    while (archive.directoryBytes() + headerBytes + nameBytes < _archive.directoryBytes) {
        auto name = std::to_string(archive.count());
        archive.add(name.append(nameBytes - name.size(), 'n'));
    }
    const auto rest = _archive.directoryBytes - archive.directoryBytes() - headerBytes;
    EXPECT_TRUE(imports(StoredArchive(archive).add(std::string(rest, 'r'))));
    EXPECT_FALSE(imports(archive.add(std::string(rest + 1, 'r'))));
}

TEST_F(BookBounds, NamesThatFallTogether)
{
    // All names built from these pairs have the same hash.
    const auto alike = [](std::uint64_t count) {
        auto archive = withMembers(6'000);
        for (std::uint64_t i = 0; i < count; ++i) {
            std::string name;
            for (int bit = 0; bit < 12; ++bit)
                name += i >> bit & 1 ? "Ab" : "BA";
            archive.add(name);
        }
        return archive;
    };
    // Some other names have the same hash.
    EXPECT_TRUE(imports(alike(_archive.alikeNames - 100)));
    EXPECT_FALSE(imports(alike(_archive.alikeNames + 1)));
}

TEST_F(BookBounds, BytesOfAMember)
{
    const auto padding = static_cast<std::size_t>(_archive.memberBytes / (_archive.ratio - 2));
    EXPECT_TRUE(imports(withSizes({ _archive.memberBytes }, padding)));
    EXPECT_FALSE(imports(withSizes({ _archive.memberBytes + 1 }, padding)));
}

TEST_F(BookBounds, BytesInTotal)
{
    const auto padding = static_cast<std::size_t>(_archive.totalBytes / _archive.ratio);
    const auto others = withSizes({}, padding).memberBytes();
    std::vector<std::uint64_t> sizes { _archive.memberBytes, _archive.totalBytes - _archive.memberBytes - others };
    EXPECT_TRUE(imports(withSizes(sizes, padding)));
    sizes.back() += 1;
    EXPECT_FALSE(imports(withSizes(sizes, padding)));
}

TEST_F(BookBounds, BytesForEachByteOfTheArchive)
{
    constexpr std::size_t padding = 1'000'000;
    const auto archive = withSizes({ 1 }, padding);
    const auto most = archive.bytes().size() * _archive.ratio - archive.memberBytes() + 1;
    EXPECT_TRUE(imports(withSizes({ most }, padding)));
    EXPECT_FALSE(imports(withSizes({ most + _archive.ratio }, padding)));
}

TEST_F(BookBounds, BytesThatAreFree)
{
    const auto most = _archive.freeBytes - withSizes({}).memberBytes();
    EXPECT_TRUE(imports(withSizes({ most })));
    EXPECT_FALSE(imports(withSizes({ most + 1 })));
}

TEST_F(BookBounds, BytesOfAPath)
{
    EXPECT_TRUE(imports(Book().archive().add(std::string(_archive.pathBytes, 'n'))));
    EXPECT_FALSE(imports(Book().archive().add(std::string(_archive.pathBytes + 1, 'n'))));
}

TEST_F(BookBounds, DepthOfAPath)
{
    EXPECT_TRUE(imports(Book().archive().add(repeated(_archive.depth - 1, "d/") + "file")));
    EXPECT_FALSE(imports(Book().archive().add(repeated(_archive.depth, "d/") + "file")));
}

TEST_F(BookBounds, DepthOfADocument)
{
    // The metadata are two levels below the root of the package document; the others are whole documents.
    EXPECT_TRUE(imports({ .metadata = nested(_xml.depth - 2) }));
    EXPECT_FALSE(imports({ .metadata = nested(_xml.depth - 1) }));
    EXPECT_TRUE(imports({ .contents = nested(_xml.depth) }));
    EXPECT_FALSE(imports({ .contents = nested(_xml.depth + 1) }));
    EXPECT_TRUE(imports({ .page = nested(_xml.depth), .fixed = true }));
    EXPECT_FALSE(imports({ .page = nested(_xml.depth + 1), .fixed = true }));
}

TEST_F(BookBounds, BytesOfADocument)
{
    const std::string start = "<!--";
    const std::string end = "--><ncx/>";
    const std::string text(_xml.bytes - start.size() - end.size(), 'x');
    EXPECT_TRUE(imports({ .contents = start + text + end }));
    EXPECT_FALSE(imports({ .contents = start + text + "x" + end }));
}

TEST_F(BookBounds, ElementsOfADocument)
{
    EXPECT_TRUE(imports({ .page = "<p>" + repeated(_xml.elements - 1, "<b/>") + "</p>", .fixed = true }));
    EXPECT_FALSE(imports({ .page = "<p>" + repeated(_xml.elements, "<b/>") + "</p>", .fixed = true }));
}

TEST_F(BookBounds, AttributesOfAnElement)
{
    const auto withAttributes = [](std::size_t count) {
        std::string page = "<html";
        for (std::size_t i = 0; i < count; ++i)
            page += " a" + std::to_string(i) + "=''";
        return page + "/>";
    };
    EXPECT_TRUE(imports({ .page = withAttributes(_xml.attributes), .fixed = true }));
    EXPECT_FALSE(imports({ .page = withAttributes(_xml.attributes + 1), .fixed = true }));
}

TEST_F(BookBounds, AttributesInOtherEncodings)
{
    // A character whose bytes contain "<" must not reset the count.
    const auto encoded = [](std::size_t count, int bytes, bool lowestFirst) {
        std::string text;
        const auto put = [&](std::uint32_t character) {
            for (int i = 0; i < bytes; ++i)
                text += static_cast<char>(character >> 8 * (lowestFirst ? i : bytes - 1 - i) & 0xFF);
        };
        const auto putAll = [&](const std::string& characters) {
            for (const char c : characters)
                put(static_cast<unsigned char>(c));
        };
        put(0xFEFF);
        putAll("<html");
        for (std::size_t i = 0; i < count; ++i) {
            putAll(" a" + std::to_string(i) + "='");
            put(0x3C3C);
            putAll("'");
        }
        putAll("/>");
        return text;
    };
    for (const bool lowestFirst : { false, true }) {
        EXPECT_TRUE(imports({ .page = encoded(100, 2, lowestFirst), .fixed = true }));
        EXPECT_FALSE(imports({ .page = encoded(_xml.attributes + 1, 2, lowestFirst), .fixed = true }));
    }
}

TEST_F(BookBounds, TextOfEntities)
{
    EXPECT_TRUE(imports({ .page = expanding(_xml.freeExpansion), .fixed = true }));
    EXPECT_FALSE(imports({ .page = expanding(_xml.freeExpansion + 1), .fixed = true }));
}

TEST_F(BookBounds, EntitiesOfEntities)
{
    std::string document = "<!DOCTYPE c [<!ENTITY e0 'lol'>";
    for (int i = 1; i < 30; ++i) {
        const auto before = "&e" + std::to_string(i - 1) + ";";
        document += "<!ENTITY e" + std::to_string(i) + " '" + repeated(10, before) + "'>";
    }
    document += "]><c>&e29;</c>";
    EXPECT_FALSE(imports({ .contents = document }));
    EXPECT_FALSE(imports({ .page = document, .fixed = true }));
    EXPECT_FALSE(imports(StoredArchive().add("mimetype", "epub").add("META-INF/container.xml", document)));
    EXPECT_FALSE(imports(StoredArchive()
                             .add("mimetype", "epub")
                             .add("META-INF/container.xml", "<rootfile full-path='book.opf'/>")
                             .add("book.opf", document)));
}

TEST_F(BookBounds, ItemsOfTheManifest)
{
    // Three members belong to the book itself.
    EXPECT_TRUE(imports({ .items = repeated(_book.manifestItems - 3, "<item id='a' href='b'/>") }));
    EXPECT_FALSE(imports({ .items = repeated(_book.manifestItems - 2, "<item id='a' href='b'/>") }));
}

TEST_F(BookBounds, EntriesOfTheReadingOrder)
{
    const auto book = inspect(Book { .references = repeated(_book.spineEntries - 1, "<r idref='page'/>") }.archive());
    ASSERT_TRUE(book);
    EXPECT_EQ(book->files().size(), _book.spineEntries);
    EXPECT_FALSE(imports({ .references = repeated(_book.spineEntries, "<r idref='page'/>") }));
}

TEST_F(BookBounds, EntriesOfTheContents)
{
    const auto contents
        = [](std::size_t count) { return "<ncx>" + repeated(count, "<content src='page.xhtml'/>") + "</ncx>"; };
    const auto book = inspect(Book { .contents = contents(_book.contentsEntries) }.archive());
    ASSERT_TRUE(book);
    EXPECT_EQ(book->content()->size(), _book.contentsEntries);
    EXPECT_FALSE(imports({ .contents = contents(_book.contentsEntries + 1) }));
}

TEST_F(BookBounds, BytesOfTheEntry)
{
    // Each path has 4 kB below the book's folder, plus a few stored bytes, like the other fields.
    constexpr std::size_t pathBytes = 4'096;
    const auto base = _hub.layout._booksPath + "/Book/";
    const auto most = _book.entryBytes / pathBytes;
    const auto name = std::string(pathBytes - base.size(), 'n');
    const auto references = [&](std::size_t references) {
        return Book { .items = "<item id='n' href='" + name + "'/>",
            .references = repeated(references, "<r idref='n'/>") };
    };
    EXPECT_TRUE(imports(references(most - 4)));
    EXPECT_FALSE(imports(references(most)));
    const auto contents = [&](std::size_t entries) {
        return Book { .contents = "<ncx>" + repeated(entries, "<content src='" + name + "'/>") + "</ncx>" };
    };
    EXPECT_TRUE(imports(contents(most - 6)));
    EXPECT_FALSE(imports(contents(most)));
    // Both count toward the limit.
    auto both = references(most / 2);
    both.contents = contents(most / 2).contents;
    EXPECT_FALSE(imports(both));
}

TEST_F(BookBounds, DeclarationsOfADocument)
{
    const auto declaring = [&](std::size_t bytes) {
        const std::string start = "<!DOCTYPE ncx [<!ENTITY e '";
        const std::string end = "'>]>";
        // The size is measured from the end of the name.
        return start + std::string(bytes - start.size() - end.size(), 'x') + end + "<ncx/>";
    };
    EXPECT_TRUE(imports({ .contents = declaring(_xml.subsetBytes) }));
    EXPECT_FALSE(imports({ .contents = declaring(_xml.subsetBytes + 100) }));
    EXPECT_FALSE(imports({ .page = declaring(_xml.subsetBytes + 100), .fixed = true }));
    // The document type is not closed.
    EXPECT_FALSE(imports({ .contents = "<!DOCTYPE ncx [" + std::string(10 * _xml.subsetBytes, ' ') }));
}

TEST_F(BookBounds, ChoicesOfADeclaration)
{
    // The parser compares all pairs of names.
    std::string choices = "v";
    for (int i = 0; i < 200'000; ++i)
        choices += "|v" + std::to_string(i);
    EXPECT_FALSE(imports({ .contents = "<!DOCTYPE l [<!ATTLIST l a (" + choices + ") 'v'>]><l/>" }));
}

TEST_F(BookBounds, DocumentTypeAloneIsNoDeclaration)
{
    EXPECT_TRUE(imports({ .contents = "<!DOCTYPE ncx PUBLIC '-//NISO//DTD ncx 2005-1//EN' "
                                      "'http://www.daisy.org/z3986/2005/ncx-2005-1.dtd'><ncx/>" }));
}

TEST_F(BookBounds, BytesOfATitle)
{
    const auto title = [](std::size_t bytes) { return "<dc:title>" + std::string(bytes, 't') + "</dc:title>"; };
    EXPECT_TRUE(imports({ .metadata = title(_book.textBytes) }));
    EXPECT_FALSE(imports({ .metadata = title(_book.textBytes + 1) }));
}

TEST_F(BookBounds, BytesOfALabel)
{
    const auto label
        = [](std::size_t bytes) { return "<ncx>" + std::string(bytes, 'l') + "<content src='page.xhtml'/></ncx>"; };
    EXPECT_TRUE(imports({ .contents = label(_book.textBytes) }));
    EXPECT_FALSE(imports({ .contents = label(_book.textBytes + 1) }));
}

TEST_F(BookBounds, PixelsOfACover)
{
    const auto cover = [](int width, int height) {
        std::string gif("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);
        const auto put = [&](std::size_t at, int number) {
            gif[at] = static_cast<char>(number & 0xFF);
            gif[at + 1] = static_cast<char>(number >> 8);
        };
        put(6, width);
        put(8, height);
        return gif;
    };
    static_assert(PictureLimits().pixels == 6'000 * 4'000);
    const auto at = inspect(Book { .cover = cover(6'000, 4'000) }.archive());
    ASSERT_TRUE(at);
    EXPECT_TRUE(at->imgData());
    // The book is imported without a picture.
    const auto past = inspect(Book { .cover = cover(6'000, 4'001) }.archive());
    ASSERT_TRUE(past);
    EXPECT_FALSE(past->imgData());
}

}
