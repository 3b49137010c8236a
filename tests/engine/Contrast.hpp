#pragma once

#include <gtkmm/widget.h>

#include <cairomm/surface.h>
#include <string>
#include <vector>

namespace pagora::test {

// A drawn text and its contrast ratio with the background: from 1, the same colour, to 21, black on white.
struct SeenText {
    std::string text;
    double contrast = 0;

    bool operator==(const SeenText&) const = default;
};

// Returns the maximum contrast between the most frequent colour of the picture's part and another colour in it.
double contrastWithin(const Cairo::RefPtr<Cairo::ImageSurface>& picture, int x, int y, int width, int height);

// Returns that contrast for a widget of a shown window.
double contrastWithin(Gtk::Widget& window, Gtk::Widget& widget);

// Draws a shown window or popover at four times its size and measures every visible, enabled text in it.
std::vector<SeenText> seenTexts(Gtk::Widget& window);

}
