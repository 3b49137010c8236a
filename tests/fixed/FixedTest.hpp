#pragma once

#include "fixed/FixedEpubController.hpp"
#include "tests/support/ReaderFixture.hpp"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora::test {

// A fixed-layout reader with a fake page that answers calls of the scaling script from `answers`.
class FixedTest : public ReaderFixture {
protected:
    FixedTest()
    {
        page().answer = [this](const std::string& script) { return answers[script]; };
        makeReader();
    }

    void makeReader()
    {
        reader.reset();
        reader = std::make_unique<FixedEpubController>(
            window, hub, state, loop, [](const std::string& name) { return "/* " + name + " */"; });
    }

    static Url file(std::size_t number) { return Url::file("/book/page" + std::to_string(number) + ".xhtml"); }
    static std::vector<Url> files(std::size_t count)
    {
        std::vector<Url> urls;
        for (std::size_t i = 1; i <= count; ++i)
            urls.push_back(file(i));
        return urls;
    }

    void open(std::size_t count, const std::optional<std::vector<ContentsEntry>>& contents = std::nullopt)
    {
        reader->loadSplits(files(count), contents);
        page().finishDocument();
    }
    // Opens the book and turns to this page, from 1.
    void openAt(std::size_t number, std::size_t count)
    {
        open(count);
        reader->changePageTo(static_cast<float>(number));
        page().finishDocument();
        loadsBefore = page().loads.size();
    }
    // Returns the URLs loaded since `openAt`.
    std::vector<Url> newLoads() const
    {
        const auto& all = parts->webView.loads;
        return { all.begin() + static_cast<std::ptrdiff_t>(loadsBefore), all.end() };
    }

    const std::string& label() const { return parts->locLabel.text; }

    std::map<std::string, std::string> answers;
    std::size_t loadsBefore = 0;
    FakeFixedWindow window { parts };
    std::unique_ptr<FixedEpubController> reader;
};

}
