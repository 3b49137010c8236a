#pragma once

#include "base/Geometry.hpp"

#include <functional>
#include <string>

namespace pagora {

// Interfaces of the windows' controls. Frames are in points of the parent view, with the origin at the bottom left.
// Main thread only. Controls belong to their window.

class Control {
public:
    virtual ~Control() = default;
    virtual void setHidden(bool hidden) = 0;
    virtual bool isHidden() const = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual bool isEnabled() const = 0;
    virtual Rect frame() const = 0;
    virtual void setFrame(const Rect& frame) = 0;
    // Moves the keyboard focus to the control.
    virtual void makeFirstResponder() = 0;
};

class TextField : public virtual Control {
public:
    virtual void setStringValue(const std::string& text) = 0;
    virtual std::string stringValue() const = 0;
    // Sets the width that the text needs; the origin stays.
    virtual void sizeToFit() = 0;
};

class Button : public virtual Control {
public:
    virtual void setAction(std::function<void()> action) = 0;
};

// The progress of a task.
class ProgressIndicator : public virtual Control {
public:
    virtual void setMinValue(double value) = 0;
    virtual void setMaxValue(double value) = 0;
    virtual void setDoubleValue(double value) = 0;
};

// The kind of event that moved a slider.
enum class EventType : int { None = 0, LeftMouseDown = 1, LeftMouseUp = 2, LeftMouseDragged = 6, KeyDown = 10 };

class Slider : public virtual Control {
public:
    virtual double minValue() const = 0;
    virtual double maxValue() const = 0;
    virtual void setMinValue(double value) = 0;
    virtual void setMaxValue(double value) = 0;
    virtual float floatValue() const = 0;
    // Moves the knob without calling the action.
    virtual void setFloatValue(float value) = 0;
    // Sets the action, which gets the event that moved the knob.
    virtual void setAction(std::function<void(EventType)> action) = 0;
};

// A row of segments of which one is selected. Segment i has the tag `tag(i)`.
class SegmentedControl : public virtual Control {
public:
    virtual int selectedSegment() const = 0;
    // Selects a segment without calling the action.
    virtual void setSelectedSegment(int segment) = 0;
    virtual int tag(int segment) const = 0;
    virtual void setAction(std::function<void()> action) = 0;
};

class PopUpButton : public virtual Control {
public:
    virtual void removeAllItems() = 0;
    virtual void addItem(const std::string& title) = 0;
    virtual void addSeparator() = 0;
    // Selects an item without calling the action. Does nothing if no item has the title.
    virtual void selectItemWithTitle(const std::string& title) = 0;
    virtual std::string titleOfSelectedItem() const = 0;
    virtual void setAction(std::function<void()> action) = 0;
};

// An area that is filled with one colour.
class ColorView : public virtual Control {
public:
    virtual void setFillColor(const Color& color) = 0;
};

// A menu whose items can be hidden.
class Menu {
public:
    virtual ~Menu() = default;
    virtual int numberOfItems() const = 0;
    virtual void setItemHidden(int index, bool hidden) = 0;
    virtual void insertSeparator(int index) = 0;
};

}
