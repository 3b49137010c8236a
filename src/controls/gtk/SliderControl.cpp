#include "controls/gtk/SliderControl.hpp"

#include <gtkmm/adjustment.h>
#include <gtkmm/eventcontrollerlegacy.h>

#include <algorithm>
#include <utility>

namespace pagora {

SliderControl::SliderControl(Gtk::Scale& scale, Continuous continuous)
    : WidgetControl(scale)
    , _scale(scale)
    , _isContinuous(continuous == Continuous::Yes)
{
    // Otherwise GTK rounds the value to the displayed digits.
    _scale.set_round_digits(-1);
    _valueChanged = _scale.signal_value_changed().connect([this] { valueDidChange(); });
    const auto pointer = Gtk::EventControllerLegacy::create();
    pointer->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _pointerEvent = pointer->signal_event().connect(sigc::mem_fun(*this, &SliderControl::pointerDid), false);
    _scale.add_controller(pointer);
    _pointer = pointer;
}

SliderControl::~SliderControl()
{
    _valueChanged.disconnect();
    _pointerEvent.disconnect();
    _scale.remove_controller(_pointer);
}

double SliderControl::minValue() const
{
    return _scale.get_adjustment()->get_lower();
}

double SliderControl::maxValue() const
{
    return _scale.get_adjustment()->get_upper();
}

void SliderControl::setMinValue(double value)
{
    _isSetting = true;
    _scale.set_range(value, std::max(value, maxValue()));
    _isSetting = false;
}

void SliderControl::setMaxValue(double value)
{
    _isSetting = true;
    _scale.set_range(std::min(value, minValue()), value);
    _isSetting = false;
}

float SliderControl::floatValue() const
{
    return static_cast<float>(_scale.get_value());
}

void SliderControl::setFloatValue(float value)
{
    _isSetting = true;
    _scale.set_value(value);
    _isSetting = false;
}

bool SliderControl::pointerDid(const Glib::RefPtr<const Gdk::Event>& event)
{
    switch (event->get_event_type()) {
    case Gdk::Event::Type::BUTTON_PRESS:
    case Gdk::Event::Type::TOUCH_BEGIN:
        pointerDown();
        break;
    case Gdk::Event::Type::BUTTON_RELEASE:
    case Gdk::Event::Type::TOUCH_END:
    case Gdk::Event::Type::TOUCH_CANCEL:
    case Gdk::Event::Type::GRAB_BROKEN:
        pointerUp();
        break;
    default:
        break;
    }
    return false;
}

void SliderControl::pointerUp()
{
    if (!std::exchange(_isPressed, false))
        return;
    // Copied, because the action may destroy the slider.
    const auto onRelease = _onRelease;
    if (!_isContinuous)
        send(EventType::LeftMouseUp);
    if (onRelease)
        onRelease();
}

void SliderControl::valueDidChange()
{
    if (_isSetting)
        return;
    if (!_isPressed)
        send(EventType::KeyDown);
    else if (_isContinuous)
        send(EventType::LeftMouseDragged);
}

void SliderControl::send(EventType event)
{
    // Copied, because the action may destroy the slider.
    if (const auto action = _action)
        action(event);
}

}
