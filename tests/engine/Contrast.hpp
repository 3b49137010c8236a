#pragma once

#include <gtkmm/widget.h>

#include <cairomm/surface.h>
#include <string>
#include <vector>

namespace pagora::test {

// A text as it is drawn, and how far it stands out from what lies behind it: from 1, the same colour, to 21, black on
// white.
struct SeenText {
    std::string text;
    double contrast = 0;
};

// The contrast between the most frequent colour of the picture's part and the one in it that stands out most.
double contrastWithin(const Cairo::RefPtr<Cairo::ImageSurface>& picture, int x, int y, int width, int height);

// The same within a widget of a window that is on the screen.
double contrastWithin(Gtk::Widget& window, Gtk::Widget& widget);

// Draws the window, or the popover, at four times its size and measures every text in it that can be seen and used. It
// has to be on the screen.
std::vector<SeenText> seenTexts(Gtk::Widget& window);

}
