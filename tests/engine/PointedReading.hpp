#pragma once

#include "tests/engine/ReadingFixture.hpp"

#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>

namespace pagora::test {

// Reads books with the pointer and the keyboard of an X11 display. The window is the only one, at the display's origin.
class PointedReading : public ReadingTest {
protected:
    // A point of the page, in pixels of the display.
    std::string onDisplay(double x, double y)
    {
        const double pixel = webView().pixelSize();
        auto* const view = GTK_WIDGET(engineView());
        auto* const native = gtk_widget_get_native(view);
        double inWindowX = 0;
        double inWindowY = 0;
        gtk_widget_translate_coordinates(view, GTK_WIDGET(native), x * pixel, y * pixel, &inWindowX, &inWindowY);
        double shadowX = 0;
        double shadowY = 0;
        gtk_native_get_surface_transform(native, &shadowX, &shadowY);
        return std::to_string(std::lround(inWindowX + shadowX)) + " "
            + std::to_string(std::lround(inWindowY + shadowY));
    }
    void xdotool(const std::string& words) { ASSERT_EQ(std::system(("xdotool " + words).c_str()), 0) << words; }
    void press(double x, double y, int button = 1)
    {
        xdotool("mousemove " + onDisplay(x, y) + " click " + std::to_string(button));
    }
    // The left and right edge of an element, and its vertical middle.
    struct Line {
        double left = 0;
        double right = 0;
        double middle = 0;
    };
    Line lineOf(const std::string& id)
    {
        std::istringstream box(evaluate("(() => { const b = document.getElementById('" + id
            + "').getBoundingClientRect(); return [b.left, b.right, b.top + b.height / 2].join(' '); })()"));
        Line line;
        box >> line.left >> line.right >> line.middle;
        return line;
    }
};

}
