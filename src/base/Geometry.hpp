#pragma once

namespace pagora {

// Logical pixels (points).
struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

// Logical pixels; the origin is the bottom-left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const Rect&) const = default;
};

// Components from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    static constexpr Color white(double level, double alpha = 1) { return { level, level, level, alpha }; }
    static constexpr Color clear() { return { 0, 0, 0, 0 }; }
    bool operator==(const Color&) const = default;
};

}
