// Fixed-layout books read page by page in the running program.

#include "desktop/gtk/SharedWindow.hpp"
#include "tests/engine/PageFaults.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

namespace pagora::test {

namespace {

constexpr auto madeBook = "Made";

class ReadingAnyFixedBook : public ReadingTest, public testing::WithParamInterface<std::string> {
protected:
    // Opens the book if it has a fixed layout; returns whether it does.
    bool read()
    {
        const auto made = GetParam() == madeBook;
        import(made ? EpubBuilder().chapters(6).fixedLayout(480, 700).write(_home.path("Made.epub")) : GetParam());
        if (bookCount() == 0 || book()->type() != "fixed")
            return false;
        open();
        return true;
    }
    Window& window() { return state().reading._fixedWindowController->window(); }
    std::size_t pageCount() { return fixedReader().bookSplits().size(); }
    void resizeTo(double width, double height)
    {
        window().setFrame({ 0, 0, width, height });
        auto* const shown = GTK_WIDGET(dynamic_cast<SharedWindow&>(window()).window().gobj());
        const auto hasFollowed = [&] {
            return hasSize(shown, width, height) && evaluate(innerSize) == sizeText(webView().frame())
                && faults().empty();
        };
        EXPECT_TRUE(waitUntil(hasFollowed)) << faults();
    }
    std::string faults() { return evaluate(pageFaults); }
    // Expects that the page of this index is shown with the right file, uncropped and in proportion.
    void expectPage(std::size_t index)
    {
        ASSERT_EQ(fixedReader().activeSplitIndex(), index);
        EXPECT_EQ(evaluate("decodeURIComponent(location.pathname.split('/').pop())"),
            fixedReader().bookSplits().at(index).lastPathComponent());
        EXPECT_TRUE(waitUntil([&] { return faults().empty(); })) << "page " << index + 1 << ": " << faults();
    }
    void turn(int tag)
    {
        fixedReader().changePage(tag);
        settleFixed();
    }
    void turnToTheEnd()
    {
        for (std::size_t index = 1; index < pageCount(); ++index) {
            turn(1);
            expectPage(index);
        }
    }
    void turnToTheStart()
    {
        for (std::size_t index = pageCount() - 1; index-- > 0;) {
            turn(0);
            expectPage(index);
        }
    }
};

}

TEST_P(ReadingAnyFixedBook, EveryPageIsWholeAndInProportionInThreeWindowSizes)
{
    if (!read())
        return;
    expectPage(0);
    turnToTheEnd();
    resizeTo(1200, 520);
    turnToTheStart();
    resizeTo(520, 800);
    turnToTheEnd();
    turnToTheStart();
    EXPECT_FALSE(isLogged("fail"));
}

namespace {

std::vector<std::string> fixedBooks()
{
    auto books = corpusBooks();
    std::erase_if(books, [](const std::string& path) { return path.find("fixed") == std::string::npos; });
    books.insert(books.begin(), madeBook);
    return books;
}

INSTANTIATE_TEST_SUITE_P(Books, ReadingAnyFixedBook, testing::ValuesIn(fixedBooks()),
    [](const testing::TestParamInfo<std::string>& book) { return readingTestName(book.param); });

}

}
