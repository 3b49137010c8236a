#include "epub/Unpacking.hpp"

#include "files/Archive.hpp"

namespace pagora {

void unpackFromBook(
    const std::string& archivePath, const std::vector<std::string>& contentFiles, const std::string& toPath)
{
    // An empty list would extract all members.
    if (contentFiles.empty())
        return;
    if (auto archive = Archive::open(archivePath))
        archive->extract(contentFiles, toPath);
}

void unZipBook(const BookInfo& book, const std::stop_token& stop)
{
    if (!book.epubPath() || !book.bookPath())
        return;
    if (auto archive = Archive::open(*book.epubPath()))
        archive->extract({}, *book.bookPath(), stop);
}

}
