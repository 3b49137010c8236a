#pragma once

#include "base/Geometry.hpp"

#include <gtk/gtk.h>

#include <cmath>
#include <string>

namespace pagora::test {

// A script that returns the faults of a scaled page's position in its view. Empty if all four corners are inside, the
// page is centred and as large as possible, and its aspect ratio is correct to 1 %.
inline constexpr const char* pageFaults = R"((function () {
    const box = document.documentElement.getBoundingClientRect();
    const own = rescaling.page;
    const right = innerWidth - box.right;
    const bottom = innerHeight - box.bottom;
    const faults = [];
    if (Math.min(box.left, box.top, right, bottom) < -0.01)
        faults.push('a corner is outside');
    if (Math.abs(box.left - right) > 2 || Math.abs(box.top - bottom) > 2)
        faults.push('not in the middle');
    if (Math.min(box.left + right, box.top + bottom) > 1)
        faults.push('too small');
    if (Math.abs(box.width / box.height * own.height / own.width - 1) > 0.01)
        faults.push('wrong proportion');
    if (Math.abs(box.width - own.width * Xscale) > 0.05)
        faults.push('wrong factor');
    if (scrollX || scrollY)
        faults.push('scrolled');
    return faults.length ? faults.join() + ': ' + JSON.stringify(box) + ' in ' + innerWidth + ' x ' + innerHeight : '';
})())";

// A script that returns the size of the page's view in the format of `sizeText`.
inline constexpr const char* innerSize = "innerWidth + 'x' + innerHeight";
inline std::string sizeText(const Rect& frame)
{
    return std::to_string(static_cast<int>(frame.width)) + "x" + std::to_string(static_cast<int>(frame.height));
}

// Returns whether the window has the requested size, apart from its decoration.
inline bool hasSize(GtkWidget* window, double width, double height)
{
    constexpr double around = 60;
    return std::abs(gtk_widget_get_width(window) - width) < around
        && std::abs(gtk_widget_get_height(window) - height) < around;
}

}
