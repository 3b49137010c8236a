#pragma once

#include "epub/EpubInspection.hpp"
#include "files/Files.hpp"
#include "tests/support/EpubBuilder.hpp"
#include "tests/support/FakeInspectionHub.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace pagora {

using test::EpubBuilder;
using Lines = std::vector<std::string>;

inline constexpr auto packageMember = "OEBPS/content.opf";

// Inspects books made by the tests.
class EpubInspectionTest : public testing::Test {
protected:
    EpubInspectionTest() { createFolder(_hub.layout._dataPath); }

    BookInfoPtr inspectFile(const std::string& path, StopOnErrors stopOnErrors = StopOnErrors::Yes)
    {
        return EpubInspection(_hub).getBookInfo(path, stopOnErrors);
    }
    BookInfoPtr inspect(const EpubBuilder& builder, StopOnErrors stopOnErrors = StopOnErrors::Yes)
    {
        return inspectFile(builder.write(_folder.path("Book.epub")), stopOnErrors);
    }
    // Returns the paths of a record's files, relative to the book's folder.
    Lines filesOf(const BookInfoPtr& book) const
    {
        Lines paths;
        for (const auto& url : book->files())
            paths.push_back(url.path().substr(_hub._epubPath.size() + 1));
        return paths;
    }
    std::string src(const BookInfoPtr& book, std::size_t index) const
    {
        return *book->content()->at(index).find("src")->string();
    }

    test::TemporaryFolder _folder;
    test::FakeInspectionHub _hub { _folder.path() };
};

// Returns a book whose package document is at `path` and has this content.
inline EpubBuilder withPackage(
    const std::string& path, const std::string& manifest, const std::string& spine, const std::string& metadata = {})
{
    return EpubBuilder()
        .member("META-INF/container.xml", "<c><rootfile full-path='" + path + "'/></c>")
        .member(path,
            "<package><metadata>" + metadata + "</metadata><manifest>" + manifest + "</manifest><spine>" + spine
                + "</spine></package>");
}

}
