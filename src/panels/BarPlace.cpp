#include "panels/BarPlace.hpp"

#include <algorithm>
#include <array>
#include <optional>

namespace pagora {

namespace {

// Space between the bar and the text.
constexpr double gap = 6;

double right(const Rect& box)
{
    return box.x + box.width;
}

double bottom(const Rect& box)
{
    return box.y + box.height;
}

bool overlap(const Rect& a, const Rect& b)
{
    return a.x < right(b) && b.x < right(a) && a.y < bottom(b) && b.y < bottom(a);
}

// Tries positions of the bar along the lines of the view.
class Search {
public:
    Search(const PlacedText& text, const Size& bar, const Size& view)
        : _text(text)
        , _bar(bar)
        , _view(view)
    {
    }

    // Returns the position at that height, as near to the middle of the line as the text allows.
    std::optional<Rect> at(double y, const Rect& line) const
    {
        if (y < 0 || y + _bar.height > _view.height)
            return std::nullopt;
        const double middle = line.x + (line.width - _bar.width) / 2;
        std::vector<double> starts { middle };
        for (const auto& box : _text.boxes) {
            starts.push_back(box.x - _bar.width);
            starts.push_back(right(box));
        }
        std::ranges::stable_sort(starts, {}, [middle](double x) { return x < middle ? middle - x : x - middle; });
        for (const double x : starts) {
            const Rect place { within(x), y, _bar.width, _bar.height };
            if (isFree(place))
                return place;
        }
        return std::nullopt;
    }
    double within(double x) const { return std::max(0.0, std::min(x, _view.width - _bar.width)); }

private:
    bool isFree(const Rect& place) const
    {
        return std::ranges::none_of(_text.boxes, [&place](const Rect& box) { return overlap(place, box); });
    }

    const PlacedText& _text;
    const Size& _bar;
    const Size& _view;
};

}

Rect placeOfBar(const PlacedText& text, const Size& bar, const Size& view)
{
    const Search search(text, bar, view);
    struct Candidate {
        double y;
        const Rect& line;
    };
    const auto& [boxes, first, last] = text;
    // The bar moves nearer to the line if the view ends there.
    const double above = first.y >= bar.height ? std::max(0.0, first.y - gap - bar.height) : -1;
    const double below = std::max(bottom(last), std::min(bottom(last) + gap, view.height - bar.height));
    const std::array<Candidate, 4> candidates { {
        { above, first },
        { below, last },
        { 0, first },
        { view.height - bar.height, last },
    } };
    for (const auto& candidate : candidates) {
        if (const auto place = search.at(candidate.y, candidate.line))
            return *place;
    }
    return { search.within(first.x), std::max(0.0, above), bar.width, bar.height };
}

}
