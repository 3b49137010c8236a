// A table of contents with thousands of entries: building its links and following the reading position.

#include "contents/ContentsPane.hpp"

#include <benchmark/benchmark.h>

namespace {

using namespace pagora;

struct BlankTocView : TocView {
    Rect frame() const override { return rect; }
    void setFrame(const Rect& frame) override { rect = frame; }
    double clipHeight() const override { return 700; }
    void removeAllSubviews() override { }
    void addSubviews(const std::vector<tocLinkTextField*>&) override { }
    void setNeedsDisplay(std::int64_t) override { }
    void scrollToPoint(double, double) override { }
    Rect rect { 0, 0, 260, 700 };
};

struct NoChapters : ContentsDelegate {
    void changeChapter(const Url&) override { }
};

std::vector<ContentsEntry> entries(std::int64_t count)
{
    std::vector<ContentsEntry> made;
    for (std::int64_t i = 0; i < count; ++i) {
        const auto number = std::to_string(i);
        made.push_back({ "Entry " + number, *Url::fromString("file:///book/chapter.xhtml#p" + number), 2 });
    }
    return made;
}

void ContentsOpen(benchmark::State& state)
{
    const auto made = entries(state.range(0));
    BlankTocView view;
    NoChapters chapters;
    for (auto _ : state) {
        ContentsPane pane(view, chapters);
        pane.loadTOC(made);
        benchmark::DoNotOptimize(pane.links().size());
    }
}

void ContentsFollowTheReader(benchmark::State& state)
{
    BlankTocView view;
    NoChapters chapters;
    ContentsPane pane(view, chapters);
    pane.loadTOC(entries(state.range(0)));
    std::int64_t next = 0;
    for (auto _ : state) {
        next = (next + 37) % state.range(0);
        pane.updateTOClinkWithKey("chapter.xhtmlp" + std::to_string(next), 700);
    }
}

BENCHMARK(ContentsOpen)->Arg(50)->Arg(5'000)->Unit(benchmark::kMillisecond);
BENCHMARK(ContentsFollowTheReader)->Arg(50)->Arg(5'000)->Unit(benchmark::kMicrosecond);

}
