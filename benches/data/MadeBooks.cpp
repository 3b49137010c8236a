#include "benches/data/MadeBooks.hpp"

#include "benches/data/MadePictures.hpp"
#include "benches/data/MadeText.hpp"

#include <zip.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <list>
#include <utility>

namespace pagora::bench {

namespace {

constexpr std::size_t everydayChapters = 20;
constexpr std::size_t everydayChapterBytes = 15'000;
constexpr std::size_t pagePictureBytes = 60'000;

constexpr auto container = R"(<?xml version="1.0"?>
<container version="1.0" xmlns="urn:oasis:names:tc:opendocument:xmlns:container">
<rootfiles><rootfile full-path="OEBPS/content.opf" media-type="application/oebps-package+xml"/></rootfiles>
</container>
)";
constexpr auto displayOptions = R"(<?xml version="1.0" encoding="UTF-8"?>
<display_options><platform name="*"><option name="fixed-layout">true</option></platform></display_options>
)";
constexpr auto style = "p { text-indent: 1.2em; margin: 0; line-height: 1.5; } h1 { line-height: 1.2; }\n";

// A new archive, written by the destructor.
class NewArchive {
public:
    explicit NewArchive(const std::string& path)
        : _zip(zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr))
        , _path(path)
    {
    }
    ~NewArchive()
    {
        if (!_zip || zip_close(_zip) != 0) {
            std::cerr << "cannot write " << _path << "\n";
            std::exit(1);
        }
    }
    NewArchive(const NewArchive&) = delete;
    NewArchive& operator=(const NewArchive&) = delete;

    void add(const std::string& name, std::string bytes, bool compress = true)
    {
        // The ZIP library reads the bytes when the archive is closed.
        const auto& kept = _kept.emplace_back(std::move(bytes));
        auto* source = zip_source_buffer(_zip, kept.data(), kept.size(), 0);
        const auto index = zip_file_add(_zip, name.c_str(), source, ZIP_FL_ENC_UTF_8);
        zip_set_file_compression(_zip, static_cast<zip_uint64_t>(index), compress ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0);
        zip_file_set_mtime(_zip, static_cast<zip_uint64_t>(index), 1'000'000'000, 0);
    }

private:
    zip_t* _zip;
    std::string _path;
    std::list<std::string> _kept;
};

std::string file(const char* kind, std::size_t number, const char* extension)
{
    const auto digits = std::to_string(number);
    return kind + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits + extension;
}

std::string chapterFile(std::size_t number)
{
    return file("text/chapter", number, ".xhtml");
}

std::string pictureFile(std::size_t number)
{
    return file("images/picture", number, ".jpg");
}

std::string packageDocument(const BookPlan& plan, std::size_t pictures)
{
    std::string items;
    std::string spine;
    for (std::size_t i = 1; i <= plan.chapters.size(); ++i) {
        const auto id = "c" + std::to_string(i);
        items += "<item id=\"" + id + "\" href=\"" + chapterFile(i) + "\" media-type=\"application/xhtml+xml\"/>\n";
        spine += "<itemref idref=\"" + id + "\"/>\n";
    }
    for (std::size_t i = 1; i <= pictures; ++i)
        items
            += "<item id=\"p" + std::to_string(i) + "\" href=\"" + pictureFile(i) + "\" media-type=\"image/jpeg\"/>\n";
    return R"(<?xml version="1.0" encoding="utf-8"?>
<package xmlns="http://www.idpf.org/2007/opf" version="2.0" unique-identifier="id">
<metadata xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:opf="http://www.idpf.org/2007/opf">
<dc:title>)"
        + plan.title + "</dc:title><dc:creator>" + plan.author
        + R"(</dc:creator><dc:identifier id="id" opf:scheme="ISBN">)" + plan.identifier
        + R"(</dc:identifier><dc:language>en</dc:language><meta name="cover" content="cover"/></metadata>
<manifest><item id="ncx" href="toc.ncx" media-type="application/x-dtbncx+xml"/>
<item id="cover" href="images/cover.jpg" media-type="image/jpeg"/>
<item id="css" href="style.css" media-type="text/css"/>
)" + items
        + "</manifest>\n<spine toc=\"ncx\">" + spine + "</spine></package>\n";
}

std::string contents(const BookPlan& plan, const std::vector<std::string>& headings)
{
    std::string points;
    for (std::size_t i = 1; i <= headings.size(); ++i) {
        const auto number = std::to_string(i);
        points += "<navPoint id=\"n" + number + "\" playOrder=\"" + number + "\"><navLabel><text>" + headings[i - 1]
            + "</text></navLabel><content src=\"" + chapterFile(i) + "\"/></navPoint>\n";
    }
    return R"(<?xml version="1.0" encoding="utf-8"?>
<ncx xmlns="http://www.daisy.org/z3986/2005/ncx/" version="2005-1"><head/>
<docTitle><text>)"
        + plan.title + "</text></docTitle><navMap>" + points + "</navMap></ncx>\n";
}

std::string fixedPage(std::size_t number, const std::string& heading, MadeText& random)
{
    std::string page = R"(<?xml version="1.0" encoding="utf-8"?>
<html xmlns="http://www.w3.org/1999/xhtml"><head><title>)"
        + heading + R"(</title><meta name="viewport" content="width=600, height=800"/>
<style>body { margin: 0; width: 600px; height: 800px; position: relative; background: #fdf8ee; }
img { position: absolute; left: 40px; top: 40px; width: 520px; height: 390px; }
p { position: absolute; left: 40px; width: 520px; margin: 0; font: 18px serif; }</style></head><body>
<img src="../)"
        + pictureFile(number) + "\" alt=\"\"/>\n";
    for (int line = 0; line < 8; ++line)
        page += "<p style=\"top: " + std::to_string(460 + line * 40) + "px\">" + random.sentence() + "</p>\n";
    return page + "</body></html>\n";
}

}

void writeBook(const std::string& path, const BookPlan& plan, std::uint64_t seed)
{
    MadeText random(seed);
    std::vector<std::string> headings;
    for (std::size_t i = 0; i < plan.chapters.size(); ++i)
        headings.push_back(random.title());
    auto pictures = plan.pictures;
    if (plan.isFixed)
        pictures.insert(pictures.begin(), plan.chapters.size(), pagePictureBytes);

    NewArchive archive(path);
    archive.add("mimetype", "application/epub+zip", false);
    archive.add("META-INF/container.xml", container);
    if (plan.isFixed)
        archive.add("META-INF/com.apple.ibooks.display-options.xml", displayOptions);
    archive.add("OEBPS/content.opf", packageDocument(plan, pictures.size()));
    archive.add("OEBPS/toc.ncx", contents(plan, headings));
    archive.add("OEBPS/style.css", style);
    archive.add("OEBPS/images/cover.jpg", madeCover(seed), false);
    for (std::size_t i = 1; i <= plan.chapters.size(); ++i) {
        const auto& heading = headings[i - 1];
        archive.add("OEBPS/" + chapterFile(i),
            plan.isFixed ? fixedPage(i, heading, random) : random.chapter(heading, plan.chapters[i - 1]));
    }
    for (std::size_t i = 1; i <= pictures.size(); ++i)
        archive.add("OEBPS/" + pictureFile(i), paddedPicture(pictures[i - 1], random), false);
}

BookPlan everydayBook(std::size_t number)
{
    MadeText random(number + 1'000'000);
    BookPlan plan;
    plan.title = random.title();
    plan.author = random.name();
    plan.identifier = std::to_string(9'780'000'000'000 + number);
    plan.chapters.assign(everydayChapters, everydayChapterBytes);
    return plan;
}

std::string everydayFileName(std::size_t number)
{
    return everydayBook(number).title + file(" - ", number, ".epub");
}

std::vector<std::string> writeEverydayBooks(const std::string& folder, std::size_t count)
{
    std::filesystem::create_directories(folder);
    std::vector<std::string> paths;
    for (std::size_t number = 1; number <= count; ++number) {
        paths.push_back(folder + "/" + everydayFileName(number));
        writeBook(paths.back(), everydayBook(number), number);
    }
    return paths;
}

}
