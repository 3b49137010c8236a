#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/support/EpubBuilder.hpp"

namespace pagora::test {

namespace {

class ReadingPlace : public ReadingTest {
protected:
    void read(const std::string& madeBook)
    {
        import(writeMadeBook(madeBook, _home.path()));
        ASSERT_EQ(bookCount(), 1u);
        open();
    }
    void turnPages(int count)
    {
        for (int i = 0; i < count; ++i)
            turn(1);
    }
    long long width() { return number("window.innerWidth"); }
    // Returns whether the library is shown and no book is open.
    bool libraryIsShown()
    {
        return !state().reading._epubWindowController && _program->libraryWindow.mainWindow().isVisible();
    }
};

class ReadingPlaceInBook : public ReadingPlace, public testing::WithParamInterface<std::string> { };

}

TEST_P(ReadingPlaceInBook, IsKeptForEachPageThatIsTurnedTo)
{
    read(GetParam());
    for (int pages = 0; pages < 4; ++pages) {
        turn(1);
        const auto left = place();
        close();
        open();
        EXPECT_EQ(place(), left);
    }
}

INSTANTIATE_TEST_SUITE_P(Made, ReadingPlaceInBook, testing::Values("Pictures", "LongChapters", "RightToLeft"),
    [](const auto& book) { return book.param; });

TEST_F(ReadingPlace, StaysWhereItIsOverManyStarts)
{
    read("Pictures");
    turnPages(3);
    const auto left = place();
    ASSERT_TRUE(left.chapter > 0 || left.offset > 0);
    for (int round = 0; round < 5; ++round) {
        restart();
        open();
        EXPECT_EQ(place(), left) << "round " << round;
    }
}

TEST_F(ReadingPlace, HalfFullPageAtTheEndOfAChapterIsKept)
{
    read("LongChapters");
    goToChapter(1);
    turn(1);
    const auto left = place();
    ASSERT_EQ(left.offset, number("document.body.scrollWidth") - width());
    ASSERT_EQ(left.offset, width());
    for (int round = 0; round < 3; ++round) {
        close();
        open();
        EXPECT_EQ(place(), left) << "round " << round;
    }
}

TEST_F(ReadingPlace, LastPageIsKept)
{
    read("Pictures");
    goToChapter(1);
    while (!isAtEnd())
        turn(1);
    const auto left = place();
    restart();
    open();
    EXPECT_EQ(place(), left);
    EXPECT_TRUE(isAtEnd());
}

TEST_F(ReadingPlace, SliderLoadsAChapterAtItsStart)
{
    read("LongChapters");
    turn(1);
    moveSlider(2.0);
    EXPECT_EQ(reader().activeSplitIndex(), 2u);
    EXPECT_EQ(number("window.pageXOffset"), 0);
    EXPECT_EQ(window().locSlider().floatValue(), 2.0f);
}

TEST_F(ReadingPlace, SliderWithinTheChapterSeeksInIt)
{
    read("LongChapters");
    moveSlider(0.01);
    EXPECT_EQ(reader().activeSplitIndex(), 0u);
    EXPECT_EQ(number("window.pageXOffset"), width());
}

TEST_F(ReadingPlace, PageThatTheSliderFoundIsKept)
{
    read("LongChapters");
    for (const double value : { 0.01, 2.02 }) {
        moveSlider(value);
        const auto left = place();
        ASSERT_EQ(left.offset, width());
        close();
        open();
        EXPECT_EQ(place(), left);
    }
}

TEST_F(ReadingPlace, SliderAtItsEndShowsTheEndOfTheChapter)
{
    read("LongChapters");
    moveSlider(window().locSlider().maxValue());
    EXPECT_EQ(reader().activeSplitIndex(), 0u);
    EXPECT_EQ(number("window.pageXOffset"), number("document.body.scrollWidth") - width());
    EXPECT_EQ(window().locLabel().stringValue(), "100 %");
}

TEST_F(ReadingPlace, KeysTurnThePages)
{
    read("LongChapters");
    auto* const keys = window().parts().window.window().gobj();
    press(keys, GDK_KEY_Right);
    EXPECT_TRUE(waitUntil([this] { return reader().readAmount() > 0; }));
    settle();
    EXPECT_EQ(number("window.pageXOffset"), width());
    press(keys, GDK_KEY_Left);
    EXPECT_TRUE(waitUntil([this] { return reader().readAmount() == 0; }));
    settle();
    EXPECT_EQ(number("window.pageXOffset"), 0);
}

TEST_F(ReadingPlace, ClosingWhileAChapterLoadsKeepsThePageThatWasShown)
{
    read("LongChapters");
    turnPages(2);
    const auto left = place();
    reader().changeChapter(book()->files().at(2));
    close();
    EXPECT_TRUE(libraryIsShown());
    restart();
    open();
    EXPECT_EQ(place(), left);
}

TEST_F(ReadingPlace, ClosingWhileTheFirstChapterLoadsKeepsTheStoredPlace)
{
    read("LongChapters");
    turnPages(2);
    const auto left = place();
    close();
    _program->controller.sendDoubleClick(book());
    ASSERT_TRUE(waitUntil([this] { return !reader().bookSplits().empty(); }));
    close();
    EXPECT_TRUE(libraryIsShown());
    restart();
    open();
    EXPECT_EQ(place(), left);
}

TEST_F(ReadingPlace, AnotherBookTakesTheOpenOnesPlace)
{
    import(writeMadeBook("LongChapters", _home.path()));
    import(writeMadeBook("Pictures", _home.path()));
    open(0);
    turnPages(2);
    const auto left = place();
    open(1);
    EXPECT_EQ(state().reading.currentBook, book(1));
    EXPECT_EQ(reader().bookSplits(), book(1)->files());
    EXPECT_EQ(place().offset, 0);
    open(0);
    EXPECT_EQ(place(), left);
}

TEST_F(ReadingPlace, BookThatIsClosedWhileItIsUnpackedCanBeReadLater)
{
    EpubBuilder big;
    for (int i = 0; i < 28; ++i)
        big.member("OEBPS/big" + std::to_string(i), std::string(2u << 20, static_cast<char>('a' + i)));
    import(big.write(_home.path("Big.epub")));
    ASSERT_EQ(bookCount(), 1u);
    _program->controller.sendDoubleClick(book());
    close();
    EXPECT_TRUE(libraryIsShown());
    EXPECT_FALSE(book()->unPacked());
    open();
    EXPECT_EQ(place().text.substr(0, 7), "Chapter");
    EXPECT_EQ(reader().activeSplitIndex(), 0u);
}

TEST_F(ReadingPlace, BookThatMakesWayWhileItIsUnpackedIsNotRead)
{
    import(writeMadeBook("LongChapters", _home.path()));
    import(writeMadeBook("Pictures", _home.path()));
    _program->controller.sendDoubleClick(book(0));
    open(1);
    EXPECT_EQ(reader().bookSplits(), book(1)->files());
    EXPECT_FALSE(isLogged("fail"));
}

TEST_F(ReadingPlace, WindowsKeepTheirSize)
{
    read("DecomposedNames");
    const auto opened = width();
    const auto frame = _program->libraryWindow.mainWindow().frame();
    for (int round = 0; round < 3; ++round) {
        close();
        open();
        EXPECT_EQ(width(), opened);
        EXPECT_EQ(_program->libraryWindow.mainWindow().frame(), frame);
    }
}

}
