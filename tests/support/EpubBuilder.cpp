#include "tests/support/EpubBuilder.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <zip.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <sys/stat.h>
#include <unordered_map>

namespace pagora::test {

namespace {

constexpr auto containerFile = R"(<?xml version="1.0"?>
<container version="1.0" xmlns="urn:oasis:names:tc:opendocument:xmlns:container">
<rootfiles><rootfile full-path="OEBPS/content.opf" media-type="application/oebps-package+xml"/></rootfiles>
</container>)";

constexpr auto displayOptions = R"(<display_options><platform name="*">
<option name="fixed-layout">true</option></platform></display_options>)";

void check(bool worked)
{
    if (!worked)
        throw std::runtime_error("the archive cannot be written");
}

}

EpubBuilder EpubBuilder::empty()
{
    EpubBuilder builder;
    builder._isBook = false;
    return builder;
}

EpubBuilder& EpubBuilder::title(std::string title)
{
    _title = std::move(title);
    return *this;
}

EpubBuilder& EpubBuilder::author(std::string author)
{
    _author = std::move(author);
    return *this;
}

EpubBuilder& EpubBuilder::identifier(std::string identifier)
{
    _identifier = std::move(identifier);
    return *this;
}

EpubBuilder& EpubBuilder::chapters(int count)
{
    _chapters = count;
    return *this;
}

EpubBuilder& EpubBuilder::cover(int width, int height)
{
    _coverWidth = width;
    _coverHeight = height;
    return *this;
}

EpubBuilder& EpubBuilder::fixedLayout(int width, int height)
{
    _pageWidth = width;
    _pageHeight = height;
    return *this;
}

EpubBuilder& EpubBuilder::member(std::string name, std::string bytes, MemberKind kind)
{
    _changes.push_back({ std::move(name), std::move(bytes), kind });
    return *this;
}

EpubBuilder& EpubBuilder::anotherMember(std::string name, std::string bytes)
{
    _doubles.push_back({ std::move(name), std::move(bytes) });
    return *this;
}

EpubBuilder& EpubBuilder::without(const std::string& name)
{
    _removed.push_back(name);
    return *this;
}

std::string EpubBuilder::packageDocument() const
{
    std::string items;
    std::string spine;
    for (int i = 1; i <= _chapters; ++i) {
        const auto n = std::to_string(i);
        items += "<item id=\"c" + n + "\" href=\"chapter" + n + ".xhtml\" media-type=\"application/xhtml+xml\"/>\n";
        spine += "<itemref idref=\"c" + n + "\"/>\n";
    }
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<package xmlns="http://www.idpf.org/2007/opf" version="2.0" unique-identifier="id">
<metadata xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:opf="http://www.idpf.org/2007/opf">
<dc:title>)"
        + _title + "</dc:title><dc:creator>" + _author + "</dc:creator><dc:identifier id=\"id\">" + _identifier
        + R"(</dc:identifier><meta name="cover" content="cover"/>
</metadata>
<manifest>
<item id="ncx" href="toc.ncx" media-type="application/x-dtbncx+xml"/>
<item id="cover" href="images/cover.jpg" media-type="image/jpeg"/>
)" + items
        + "</manifest>\n<spine toc=\"ncx\">\n" + spine + "</spine>\n</package>";
}

std::string EpubBuilder::contents() const
{
    std::string points;
    for (int i = 1; i <= _chapters; ++i) {
        const auto n = std::to_string(i);
        points += "<navPoint id=\"n" + n + "\"><navLabel><text>Chapter " + n
            + "</text></navLabel><content src=\"chapter" + n + ".xhtml\"/></navPoint>\n";
    }
    return "<?xml version=\"1.0\"?>\n<ncx xmlns=\"http://www.daisy.org/z3986/2005/ncx/\"><docTitle><text>" + _title
        + "</text></docTitle><navMap>\n" + points + "</navMap></ncx>";
}

std::string EpubBuilder::page(int number) const
{
    const auto viewport = _pageWidth > 0 ? "<meta name=\"viewport\" content=\"width=" + std::to_string(_pageWidth)
            + ", height=" + std::to_string(_pageHeight) + "\"/>"
                                         : std::string();
    const auto n = std::to_string(number);
    return "<?xml version=\"1.0\"?>\n<html xmlns=\"http://www.w3.org/1999/xhtml\"><head><title>Chapter " + n
        + "</title>" + viewport + "</head><body><h1>Chapter " + n + "</h1><p>Some text.</p></body></html>";
}

std::vector<EpubBuilder::Member> EpubBuilder::members() const
{
    std::vector<Member> all;
    if (_isBook) {
        all = { { "mimetype", "application/epub+zip" }, { "META-INF/container.xml", containerFile },
            { "OEBPS/content.opf", packageDocument() }, { "OEBPS/toc.ncx", contents() },
            { "OEBPS/images/cover.jpg", picture(_coverWidth, _coverHeight) } };
        for (int i = 1; i <= _chapters; ++i)
            all.push_back({ "OEBPS/chapter" + std::to_string(i) + ".xhtml", page(i) });
        if (_pageWidth > 0)
            all.push_back({ "META-INF/com.apple.ibooks.display-options.xml", displayOptions });
    }
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < all.size(); ++i)
        places[all[i].name] = i;
    for (const auto& change : _changes) {
        const auto [place, isNew] = places.try_emplace(change.name, all.size());
        if (isNew)
            all.push_back(change);
        else
            all[place->second] = change;
    }
    std::erase_if(all,
        [&](const auto& member) { return std::find(_removed.begin(), _removed.end(), member.name) != _removed.end(); });
    return all;
}

std::string EpubBuilder::write(const std::string& path) const
{
    std::filesystem::remove(path);
    auto all = members();
    // The library rejects duplicate names, so duplicates get another name first.
    for (std::size_t i = 0; i < _doubles.size(); ++i) {
        auto placeholder = std::string(_doubles[i].name.size(), static_cast<char>('\x01' + i));
        all.push_back({ placeholder, _doubles[i].bytes, MemberKind::Plain });
    }
    auto* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_EXCL, nullptr);
    check(zip);
    for (const auto& member : all) {
        const auto flags = member.kind == MemberKind::NameNotUtf8 ? ZIP_FL_ENC_CP437 : ZIP_FL_ENC_GUESS;
        const bool isFolder = member.name.ends_with('/');
        const auto index = isFolder ? zip_dir_add(zip, member.name.c_str(), flags)
                                    : zip_file_add(zip, member.name.c_str(),
                                        zip_source_buffer(zip, member.bytes.data(), member.bytes.size(), 0), flags);
        check(index >= 0);
        const auto place = static_cast<zip_uint64_t>(index);
        if (member.kind == MemberKind::Link)
            zip_file_set_external_attributes(
                zip, place, 0, ZIP_OPSYS_UNIX, static_cast<zip_uint32_t>(S_IFLNK | 0777) << 16);
        if (member.kind == MemberKind::Encrypted)
            check(zip_file_set_encryption(zip, place, ZIP_EM_AES_256, "secret") == 0);
    }
    check(zip_close(zip) == 0);
    for (std::size_t i = 0; i < _doubles.size(); ++i)
        replaceInFile(path, std::string(_doubles[i].name.size(), static_cast<char>('\x01' + i)), _doubles[i].name);
    return path;
}

std::string picture(int width, int height, const std::string& format, unsigned char alpha)
{
    const std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)> pixbuf(
        gdk_pixbuf_new(GDK_COLORSPACE_RGB, alpha < 255, 8, width, height), &g_object_unref);
    check(pixbuf != nullptr);
    gdk_pixbuf_fill(pixbuf.get(), 0x33669900u | alpha);
    gchar* buffer = nullptr;
    gsize size = 0;
    check(gdk_pixbuf_save_to_buffer(pixbuf.get(), &buffer, &size, format.c_str(), nullptr, nullptr));
    const std::unique_ptr<gchar, decltype(&g_free)> owner(buffer, &g_free);
    return { buffer, size };
}

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

std::string makeFile(const std::string& path, const std::string& bytes)
{
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

void replaceInFile(const std::string& path, const std::string& from, const std::string& to)
{
    makeFile(path, replaced(contentsOf(path), from, to));
}

}
