#pragma once

namespace pagora {

// One gesture of the fingers over the page, on a touchpad or on a touchscreen: whether it is meant to turn a page. Its
// horizontal part leads from its beginning to its end, it goes far enough, and it is fast enough where it has a speed.
// Lengths in points, to the right and down.
class FlickGesture {
public:
    // As much of each step as the fingers moved.
    void moveBy(double x, double y);
    // A touch that has gone so far from where it began.
    void moveTo(double x, double y);

    // Whether the horizontal part leads so far, and is long enough to be meant.
    bool isHorizontal() const;
    // Whether the gesture has moved at all, beyond what a finger at rest does.
    bool hasMoved() const;

    // The fingers' speed along x, in points a second, if lifting them now turns a page; 0 otherwise.
    double turnAtSpeed(double velocityX, double velocityY) const;
    // How far the finger has gone along x, in points, if lifting it now turns a page; 0 otherwise.
    double turnAtRest() const;

private:
    double _x = 0;
    double _y = 0;
    // The length of the way along each axis, there and back.
    double _wayX = 0;
    double _wayY = 0;
};

}
