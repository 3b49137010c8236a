#include "page/FlickGesture.hpp"

#include <cmath>

namespace pagora {

namespace {

// How many times longer the horizontal part is: up to 34 degrees from the horizontal.
constexpr double lead = 1.5;
// What a finger at rest, or one that brushes the touchpad, stays below.
constexpr double restingWay = 8;
// A flick is at least so long, in points, and so fast, in points a second. A slow one is a finger that scrolls.
constexpr double leastWay = 16;
constexpr double leastSpeed = 150;
// A drag that may end at rest is longer.
constexpr double leastDrag = 40;

}

void FlickGesture::moveBy(double x, double y)
{
    _x += x;
    _y += y;
    _wayX += std::abs(x);
    _wayY += std::abs(y);
}

void FlickGesture::moveTo(double x, double y)
{
    moveBy(x - _x, y - _y);
}

bool FlickGesture::isHorizontal() const
{
    return _wayX >= leastWay && _wayX >= lead * _wayY;
}

bool FlickGesture::hasMoved() const
{
    return std::hypot(_x, _y) >= restingWay;
}

double FlickGesture::turnAtSpeed(double velocityX, double velocityY) const
{
    const bool isFast = std::abs(velocityX) >= leastSpeed && std::abs(velocityX) >= lead * std::abs(velocityY);
    return isFast && isHorizontal() ? velocityX : 0;
}

double FlickGesture::turnAtRest() const
{
    return std::abs(_x) >= leastDrag && isHorizontal() ? _x : 0;
}

}
