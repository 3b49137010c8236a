#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/scale.h>

namespace pagora {

// A slider of a layout. While the pointer holds the knob, the action is called for each move or, if not continuous,
// once on release. Keyboard, wheel and assistive technology call it immediately. Main thread only.
class SliderControl : public Slider, public WidgetControl {
public:
    enum class Continuous : bool { No, Yes };
    SliderControl(Gtk::Scale& scale, Continuous continuous);
    ~SliderControl() override;

    double minValue() const override;
    double maxValue() const override;
    void setMinValue(double value) override;
    void setMaxValue(double value) override;
    float floatValue() const override;
    void setFloatValue(float value) override;
    void setAction(std::function<void(EventType)> action) override { _action = std::move(action); }
    // The box around the slider determines its width.
    void setFrame(const Rect&) override { _scale.queue_resize(); }

    // Moves the knob as the keyboard does.
    void moveTo(double value) { _scale.set_value(value); }

    // Called when the pointer presses and releases the slider.
    void pointerDown() { _isPressed = true; }
    void pointerUp();
    // Sets the callback for the release of the pointer, which follows the action.
    void setReleaseHandler(std::function<void()> handler) { _onRelease = std::move(handler); }

private:
    bool pointerDid(const Glib::RefPtr<const Gdk::Event>& event);
    void valueDidChange();
    void send(EventType event);

    Gtk::Scale& _scale;
    bool _isContinuous;
    bool _isPressed = false;
    bool _isSetting = false;
    std::function<void(EventType)> _action;
    std::function<void()> _onRelease;
    Glib::RefPtr<Gtk::EventController> _pointer;
    sigc::connection _valueChanged;
    sigc::connection _pointerEvent;
};

}
