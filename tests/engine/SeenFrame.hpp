#pragma once

#include <gtkmm/widget.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace pagora::test {

// The pixels of a widget.
struct SeenFrame {
    int width = 0;
    int height = 0;
    std::vector<guint32> pixels;

    bool operator==(const SeenFrame&) const = default;
    bool isBlank() const
    {
        return std::all_of(pixels.begin(), pixels.end(), [this](guint32 pixel) { return pixel == pixels.front(); });
    }
    // How many pixels are others in that frame.
    std::size_t differences(const SeenFrame& other) const
    {
        if (width != other.width || height != other.height)
            return std::max(pixels.size(), other.pixels.size());
        std::size_t count = 0;
        for (std::size_t i = 0; i < pixels.size(); ++i)
            count += pixels[i] != other.pixels[i];
        return count;
    }
};

// What the last frame of its window showed of the widget. Nothing is drawn anew, also not in a page view.
SeenFrame seenFrameOf(Gtk::Widget& widget);

}
