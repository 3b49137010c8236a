#pragma once

namespace pagora {

// Decides whether a gesture on a touchpad or touchscreen turns the page: it must be horizontal over its whole course,
// long enough, and, if it has a speed, fast enough. Lengths are in points, positive to the right and down.
class FlickGesture {
public:
    // Adds a movement.
    void moveBy(double x, double y);
    // Sets the distance of a touch from its start.
    void moveTo(double x, double y);

    // Returns whether the gesture is horizontal so far and long enough to be intended.
    bool isHorizontal() const;

    // Returns the horizontal speed in points per second if lifting the fingers now turns a page; otherwise 0.
    double turnAtSpeed(double velocityX, double velocityY) const;
    // Returns the horizontal distance in points if lifting the finger now turns a page; otherwise 0.
    double turnAtRest() const;

private:
    double _x = 0;
    double _y = 0;
    // The total distance along each axis, in both directions.
    double _distanceX = 0;
    double _distanceY = 0;
};

}
