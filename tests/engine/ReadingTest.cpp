#include "app/BookOpening.hpp"
#include "base/Path.hpp"
#include "base/Unicode.hpp"
#include "epub/ContentsTargets.hpp"
#include "files/Archive.hpp"
#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"

#include <algorithm>
#include <map>
#include <set>

namespace pagora::test {

namespace {

// Every book, made by the tests or from PAGORA_CORPUS.
class ReadingAnyBook : public ReadingTest, public testing::WithParamInterface<std::string> {
protected:
    std::string archive() const
    {
        return GetParam().front() == '/' ? GetParam() : writeMadeBook(GetParam(), _home.path());
    }
    bool lacksAChapter() const { return GetParam() == "MissingChapter"; }
    static bool isEncrypted(const std::string& path)
    {
        const auto members = Archive::open(path)->filePaths();
        return std::find(members.begin(), members.end(), "META-INF/encryption.xml") != members.end();
    }
    // Imports the book and opens it if it was not rejected.
    bool read()
    {
        import(archive());
        if (bookCount() == 0)
            return false;
        open();
        return true;
    }
    bool isFixed() { return book()->type() == "fixed"; }
    void goTo(const Url& target)
    {
        if (isFixed()) {
            fixedReader().changeChapter(target);
            settleFixed();
        } else {
            reader().changeChapter(target);
            settle();
        }
    }

    // The number of pages of each chapter, in the order of turning in that direction.
    using PageCounts = std::map<std::uint64_t, int>;
    PageCounts turnToTheEnd(int tag);
};

// Books that are short enough to turn all pages.
class TurningAnyBook : public ReadingAnyBook { };

ReadingAnyBook::PageCounts ReadingAnyBook::turnToTheEnd(int tag)
{
    constexpr int maxTurns = 2'000;
    PageCounts pages;
    auto here = std::pair(reader().activeSplitIndex(), number("window.pageXOffset"));
    pages[here.first] = 1;
    int refused = 0;
    for (int turns = 0; turns < maxTurns; ++turns) {
        if (tag == 1 ? isAtEnd() : here == std::pair(std::uint64_t(0), 0LL))
            return pages;
        turn(tag);
        const auto there = std::pair(reader().activeSplitIndex(), number("window.pageXOffset"));
        if (there == here) {
            // This turn detects that the chapter is missing; the next one skips it.
            EXPECT_TRUE(lacksAChapter() && ++refused == 1) << "chapter " << here.first << " at " << here.second;
            if (refused != 1)
                return pages;
            continue;
        }
        EXPECT_EQ(there > here, tag == 1) << "chapter " << there.first << " at " << there.second;
        ++pages[there.first];
        here = there;
    }
    ADD_FAILURE() << "the book has no end";
    return pages;
}

constexpr auto visibility = R"((function (id) {
    const isSeen = (box) => box.width > 0 && box.height > 0;
    const boxesOf = (node) => {
        if (node instanceof Element)
            return /^(img|svg|hr|video)$/i.test(node.localName) ? [...node.getClientRects()].filter(isSeen) : [];
        const range = new Range();
        range.selectNodeContents(node);
        return node.data.trim() ? [...range.getClientRects()].filter(isSeen) : [];
    };
    const target = document.getElementById(id);
    if (!target)
        return 'start';
    const nodes = document.createTreeWalker(document.body, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT);
    nodes.currentNode = target;
    let boxes = boxesOf(target);
    // An empty element with a size is visible itself, also if the following text is on the next page.
    if (!boxes.length && !target.hasChildNodes())
        boxes = [...target.getClientRects()].filter(isSeen);
    while (!boxes.length && nodes.nextNode())
        boxes = boxesOf(nodes.currentNode);
    if (!boxes.length)
        return 'shown';
    return boxes.some((box) => box.right > 0 && box.left < innerWidth) ? 'shown' : 'at ' + boxes[0].left;
}))";

}

TEST_P(ReadingAnyBook, IsImportedOrRefusedWithOneLine)
{
    const auto path = archive();
    import(path);
    if (isEncrypted(path)) {
        EXPECT_EQ(bookCount(), 0u);
        EXPECT_EQ(
            _program->libraryWindow.errorList().stringValue(), lastPathComponent(path) + " --> epub is crypted by DRM");
    } else {
        ASSERT_EQ(bookCount(), 1u);
        EXPECT_NE(book()->title().value_or(""), "");
    }
}

TEST_P(ReadingAnyBook, OpensAtItsFirstPage)
{
    if (!read())
        return;
    if (isFixed()) {
        EXPECT_EQ(fixedReader().activeSplitIndex(), 0u);
    } else {
        EXPECT_EQ(reader().activeSplitIndex(), 0u);
        EXPECT_EQ(number("window.pageXOffset"), 0);
        EXPECT_EQ(evaluate("getComputedStyle(document.body).webkitColumnCount"), "2");
    }
    EXPECT_EQ(evaluate("document.body.innerText.trim() !== '' || document.querySelector('img, svg') !== null"), "true");
    EXPECT_FALSE(isLogged("fail"));
}

TEST_P(ReadingAnyBook, ContentsEntriesShowTheirTargets)
{
    if (!read())
        return;
    const auto entries
        = tableOfContentFrom(withTargetsFound(book()->content().value_or(Value::Array {}), *book()->bookPath()));
    // Only a sample of a long list is tested.
    constexpr std::size_t enough = 60;
    for (std::size_t i = 0; i < entries.size(); i += 1 + entries.size() / enough) {
        const auto& entry = entries[i];
        goTo(entry.src);
        const auto fragment = entry.src.fragment().value_or("");
        const auto seen = evaluate(std::string(visibility) + "('" + scriptText(fragment) + "')");
        EXPECT_EQ(evaluate("decodeURIComponent(location.pathname.split('/').pop()).normalize()"),
            composedForm(entry.src.lastPathComponent()));
        if (seen == "start") {
            EXPECT_EQ(number("window.pageXOffset"), 0) << entry.src.text();
        } else {
            EXPECT_EQ(seen, "shown") << entry.src.text();
        }
    }
    EXPECT_FALSE(isLogged("fail"));
}

TEST_P(TurningAnyBook, HasTheSamePagesInBothDirections)
{
    if (!read())
        return;
    const auto forward = turnToTheEnd(1);
    const auto end = place();
    EXPECT_EQ(forward.rbegin()->first + 1, reader().bookSplits().size());
    turn(1);
    EXPECT_EQ(place(), end);
    EXPECT_EQ(turnToTheEnd(0), forward);
    EXPECT_EQ(isLogged("fail"), lacksAChapter());
}

namespace {

std::string nameOf(const testing::TestParamInfo<std::string>& book)
{
    return readingTestName(book.param);
}

std::vector<std::string> shortCorpusBooks()
{
    const std::set<std::string> names = { "childrens-literature", "hefty-water", "trees" };
    auto books = corpusBooks();
    std::erase_if(
        books, [&](const auto& path) { return !names.contains(deletingPathExtension(lastPathComponent(path))); });
    return books;
}

INSTANTIATE_TEST_SUITE_P(Made, ReadingAnyBook, testing::ValuesIn(madeBookNames()), nameOf);
INSTANTIATE_TEST_SUITE_P(Corpus, ReadingAnyBook, testing::ValuesIn(corpusBooks()), nameOf);
INSTANTIATE_TEST_SUITE_P(Made, TurningAnyBook, testing::ValuesIn(madeBookNames()), nameOf);
INSTANTIATE_TEST_SUITE_P(Corpus, TurningAnyBook, testing::ValuesIn(shortCorpusBooks()), nameOf);

}

}
