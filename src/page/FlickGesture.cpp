#include "page/FlickGesture.hpp"

#include <cmath>

namespace pagora {

namespace {

// The horizontal distance must be this many times the vertical one: up to 34 degrees from the horizontal.
constexpr double lead = 1.5;
// Minimum length and speed of a flick, in points and points per second. Slower movements scroll.
constexpr double minLength = 16;
constexpr double minSpeed = 150;
// Minimum length of a drag that ends without speed.
constexpr double minDragLength = 40;

}

void FlickGesture::moveBy(double x, double y)
{
    _x += x;
    _y += y;
    _distanceX += std::abs(x);
    _distanceY += std::abs(y);
}

void FlickGesture::moveTo(double x, double y)
{
    moveBy(x - _x, y - _y);
}

bool FlickGesture::isHorizontal() const
{
    return _distanceX >= minLength && _distanceX >= lead * _distanceY;
}

double FlickGesture::turnAtSpeed(double velocityX, double velocityY) const
{
    const bool isFast = std::abs(velocityX) >= minSpeed && std::abs(velocityX) >= lead * std::abs(velocityY);
    return isFast && isHorizontal() ? velocityX : 0;
}

double FlickGesture::turnAtRest() const
{
    return std::abs(_x) >= minDragLength && isHorizontal() ? _x : 0;
}

}
