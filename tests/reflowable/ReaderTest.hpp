#pragma once

#include "reflowable/EpubController.hpp"
#include "tests/support/ReaderFixture.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora::test {

// A reader with a model page of 800 × 700 points and two columns of 320 points.
class ReaderTest : public ReaderFixture {
protected:
    ReaderTest()
    {
        parts->webView.rect = { 0, 0, 800, 700 };
        parts->webView.page.S = 2400;
        makeReader();
    }

    void makeReader()
    {
        reader.reset();
        reader = std::make_unique<EpubController>(window, hub, state, loop);
    }

    static Url chapter(std::size_t index) { return Url::file("/book/chapter" + std::to_string(index) + ".xhtml"); }
    static std::vector<Url> chapters(std::size_t count)
    {
        std::vector<Url> urls;
        for (std::size_t i = 0; i < count; ++i)
            urls.push_back(chapter(i));
        return urls;
    }

    // Starts a book of `count` chapters at chapter `first`, and shows that chapter. Pictures of the chapter are pending
    // until the page view reports the end of the load.
    void open(std::size_t count, std::size_t first = 0)
    {
        reader->setActiveSplitIndex(first);
        reader->loadSplits(chapters(count), std::nullopt);
        page().finishDocument(true);
        page().scripts.clear();
    }

    const std::string& label() const { return parts->locLabel.text; }
    float sliderValue() const { return parts->locSlider.value; }
    // The scrolling scripts that were evaluated, in order.
    std::vector<std::string> scrolls() const
    {
        std::vector<std::string> found;
        for (const auto& script : parts->webView.scripts) {
            if (script.starts_with("window.scrollTo("))
                found.push_back(script);
        }
        return found;
    }

    FakeEpubWindow window { parts };
    std::unique_ptr<EpubController> reader;
};

}
