#include "base/Path.hpp"
#include "files/Files.hpp"
#include "kept_pages/PagePicture.hpp"
#include "tests/engine/MadeBooks.hpp"
#include "tests/engine/ReadingFixture.hpp"
#include "tests/engine/SeenFrame.hpp"
#include "tests/support/EpubBuilder.hpp"

#include <algorithm>

namespace pagora::test {

namespace {

// A book is closed and opened again.
class LeftPage : public ReadingTest {
protected:
    ~LeftPage() override { stopWatching(); }

    void read(const std::string& madeBook, int pages = 1)
    {
        import(writeMadeBook(madeBook, _home.path()));
        ASSERT_EQ(bookCount(), 1u);
        open();
        for (int i = 0; i < pages; ++i)
            turn(1);
    }

    std::vector<std::string> files() const
    {
        std::vector<std::string> paths;
        for (const auto& name : folderEntries(folder()).value_or(paths))
            paths.push_back(appendingPathComponent(folder(), name));
        std::erase_if(paths, [](const auto& path) { return pathExtension(path) != "page"; });
        return paths;
    }
    std::string folder() const { return _home.path("Data/pages"); }

    // Waits until nothing is pending and the page is drawn in that state.
    void rest()
    {
        bool isAnswered = false;
        reader().ask("0", [&](std::int64_t) { isAnswered = true; });
        ASSERT_TRUE(waitUntil([&] { return isAnswered && reader().isSettled(); }));
        ASSERT_TRUE(waitUntil([&] { return webView().pictureAtRest().has_value(); }));
    }
    // Closes the book and returns the last frame that showed it.
    SeenFrame leave()
    {
        rest();
        auto left = nextFrame();
        for (const auto& file : files())
            removeItem(file);
        close();
        EXPECT_TRUE(waitUntil([this] { return !files().empty(); }));
        return left;
    }
    // Opens the book and waits only for the first frame. Frames are recorded from then on.
    void openAgain()
    {
        watch();
        _program->controller.sendDoubleClick(book());
        ASSERT_TRUE(waitUntil([this] { return !_frames.empty(); }));
    }

    // Redraws the page view and returns its frame.
    SeenFrame nextFrame()
    {
        watch();
        window().parts().page.widget->queue_draw();
        EXPECT_TRUE(waitUntil([this] { return !_frames.empty(); }));
        return _frames.empty() ? SeenFrame {} : _frames.back();
    }

    // Each frame of the page that differs from the previous one.
    std::vector<SeenFrame> _frames;

private:
    void watch()
    {
        stopWatching();
        _frames.clear();
        _clock
            = GDK_FRAME_CLOCK(g_object_ref(gtk_widget_get_frame_clock(GTK_WIDGET(_program->toplevel.window().gobj()))));
        const auto painted = [](GdkFrameClock*, gpointer self) { static_cast<LeftPage*>(self)->note(); };
        g_signal_connect(
            _clock, "after-paint", G_CALLBACK(static_cast<void (*)(GdkFrameClock*, gpointer)>(painted)), this);
    }
    void stopWatching()
    {
        if (!_clock)
            return;
        // The clock of a window that was destroyed has no handlers any more.
        g_signal_handlers_disconnect_by_data(_clock, this);
        g_clear_object(&_clock);
    }
    void note()
    {
        if (!state().reading._epubWindowController)
            return;
        auto* const area = window().parts().page.widget;
        if (!area || !area->get_mapped() || area->get_width() < 2)
            return;
        auto seen = seenFrameOf(*area);
        if (_frames.empty() || _frames.back() != seen)
            _frames.push_back(std::move(seen));
    }

    GdkFrameClock* _clock = nullptr;
};

class LeftPageOfBook : public LeftPage, public testing::WithParamInterface<std::string> {
protected:
    void expectNoChange()
    {
        const auto left = leave();
        ASSERT_FALSE(left.isBlank());
        openAgain();
        EXPECT_EQ(_frames.front().differences(left), 0u);
        settle();
        rest();
        for (const auto& each : _frames)
            EXPECT_EQ(each.differences(left), 0u);
        EXPECT_EQ(nextFrame().differences(left), 0u);
    }
};

class LeftPageOfCorpusBook : public LeftPageOfBook { };

}

TEST_P(LeftPageOfBook, IsShownFromTheFirstFrameOnAndNothingChangesWhenThePageIsDrawn)
{
    read(GetParam(), 2);
    expectNoChange();
}

// Each of the books in PAGORA_CORPUS. Some have no picture: books that the library rejects, fixed-layout books, which
// always open at the first page, and pages whose picture is too large for a file.
TEST_P(LeftPageOfCorpusBook, IsShownFromTheFirstFrameOnAndNothingChangesWhenThePageIsDrawn)
{
    import(GetParam());
    if (_program->libraryWindow.errorWin().isVisible())
        return;
    ASSERT_EQ(bookCount(), 1u);
    open();
    if (book()->type() != "fixed") {
        // A notice at the first opening only reduces the size of the page.
        close();
        open();
        for (int i = 0; i < 12; ++i)
            turn(1);
        rest();
        if (encodedPage(*webView().pictureAtRest(), ""))
            return expectNoChange();
    }
    close();
    EXPECT_TRUE(waitUntil([this] { return files().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(Corpus, LeftPageOfCorpusBook, testing::ValuesIn(corpusBooks()),
    [](const auto& book) { return readingTestName(book.param); });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LeftPageOfCorpusBook);

INSTANTIATE_TEST_SUITE_P(Made, LeftPageOfBook, testing::ValuesIn(madeBookNames()),
    [](const auto& book) { return readingTestName(book.param); });

TEST_F(LeftPage, IsShownAfterTheNextStart)
{
    read("LongChapters");
    const auto left = leave();
    restart();
    openAgain();
    EXPECT_EQ(_frames.front().differences(left), 0u);
    settle();
}

TEST_F(LeftPage, IsKeptWhenTheProgramEnds)
{
    read("LongChapters");
    rest();
    ASSERT_TRUE(files().empty());
    restart();
    EXPECT_EQ(files().size(), 1u);
}

TEST_F(LeftPage, IsNotShownInAnotherSizeOfTheWindow)
{
    read("LongChapters");
    leave();
    auto& library = _program->libraryWindow.mainWindow();
    const auto frame = library.frame();
    library.setFrame({ frame.x, frame.y, frame.width + 40, frame.height });
    ASSERT_TRUE(waitUntil([&] { return library.frame().width == frame.width + 40; }));
    openAgain();
    EXPECT_TRUE(_frames.front().isBlank());
    settle();
}

TEST_F(LeftPage, IsNotShownWithOtherDisplayOptions)
{
    read("LongChapters");
    auto& settings = state().settings;
    const std::vector<std::function<void()>> changes { [&] { settings.curColorOption = 3; },
        [&] { settings.curFontName = "Arial"; }, [&] { settings.curFontSize *= 1.2f; },
        [&] { settings.curNumOfColumns = 1; } };
    for (const auto& change : changes) {
        leave();
        change();
        openAgain();
        EXPECT_TRUE(_frames.front().isBlank());
        settle();
    }
}

TEST_F(LeftPage, IsNotShownAtAnotherPlace)
{
    read("LongChapters");
    leave();
    book()->setLastPlace(0.9);
    openAgain();
    EXPECT_TRUE(_frames.front().isBlank());
    settle();
}

TEST_F(LeftPage, IsNotShownWhenTheDesktopDrawsTextOtherwise)
{
    read("LongChapters");
    leave();
    const auto settings = Gtk::Settings::get_default();
    const int dpi = settings->property_gtk_xft_dpi();
    settings->property_gtk_xft_dpi() = dpi * 5 / 4;
    openAgain();
    EXPECT_TRUE(_frames.front().isBlank());
    settle();
    close();
    settings->property_gtk_xft_dpi() = dpi;
}

TEST_F(LeftPage, IsNotKeptWithTextThatIsSelected)
{
    read("LongChapters");
    rest();
    evaluate("getSelection().selectAllChildren(document.body)");
    bool isAnswered = false;
    reader().ask("0", [&](std::int64_t) { isAnswered = true; });
    ASSERT_TRUE(waitUntil([&] { return isAnswered && reader().isSettled(); }));
    evaluate("0");
    close();
    openAgain();
    EXPECT_TRUE(_frames.front().isBlank());
    settle();
}

TEST_F(LeftPage, IsTheCurrentOneAfterEachTurn)
{
    read("LongChapters");
    for (int pages = 0; pages < 3; ++pages) {
        turn(1);
        const auto left = leave();
        openAgain();
        EXPECT_EQ(_frames.front().differences(left), 0u);
        settle();
        rest();
        EXPECT_EQ(nextFrame().differences(left), 0u);
    }
}

TEST_F(LeftPage, TakesKeysThatAreAnsweredInOrderOnceThePageIsThere)
{
    read("LongChapters", 4);
    const auto offset = place().offset;
    const auto width = number("window.innerWidth");
    leave();
    openAgain();
    ASSERT_FALSE(_frames.front().isBlank());
    auto* const keys = window().parts().window.window().gobj();
    for (const auto key : { GDK_KEY_Left, GDK_KEY_Home, GDK_KEY_Right, GDK_KEY_Right, GDK_KEY_Left })
        EXPECT_TRUE(press(keys, key));
    settle();
    EXPECT_EQ(place().offset, width);
    EXPECT_NE(place().offset, offset);
}

TEST_F(LeftPage, GoesAtOnceWhenTheBookIsClosed)
{
    read("LongChapters");
    const auto left = leave();
    openAgain();
    ASSERT_EQ(_frames.front().differences(left), 0u);
    EXPECT_TRUE(press(window().parts().window.window().gobj(), GDK_KEY_w, GDK_CONTROL_MASK));
    ASSERT_TRUE(waitUntil([this] { return !state().reading._epubWindowController; }));
    EXPECT_TRUE(_program->libraryWindow.mainWindow().isVisible());
    openAgain();
    EXPECT_EQ(_frames.front().differences(left), 0u);
    settle();
}

TEST_F(LeftPage, ThatIsDamagedIsNotShown)
{
    read("LongChapters");
    for (int round = 0; round < 3; ++round) {
        const auto left = leave();
        const auto file = files().at(0);
        const auto bytes = readFile(file).value();
        ASSERT_TRUE(writeFile(
            file, round == 0 ? bytes.substr(0, bytes.size() / 2) : std::string(round == 1 ? 10 : 9'000'000, 'p')));
        openAgain();
        EXPECT_TRUE(_frames.front().isBlank());
        settle();
        rest();
        EXPECT_EQ(nextFrame().differences(left), 0u);
    }
}

TEST_F(LeftPage, GivesWayToThePageWhenItsDocumentIsGone)
{
    read("LongChapters", 0);
    const auto left = leave();
    ASSERT_TRUE(removeItem(book()->files().at(0).path()));
    openAgain();
    EXPECT_EQ(_frames.front().differences(left), 0u);
    ASSERT_TRUE(waitUntil([this] { return !_frames.empty() && _frames.back().isBlank(); }));
}

TEST_F(LeftPage, IsTheSameInEachTheme)
{
    read("LongChapters");
    for (const int theme : { 2, 3, 1 }) {
        window().colorControl().setSelectedSegment(theme - 1);
        reader().changeColor();
        settle();
        const auto left = leave();
        openAgain();
        settle();
        rest();
        for (const auto& each : _frames)
            EXPECT_EQ(each.differences(left), 0u) << theme;
    }
}

}
