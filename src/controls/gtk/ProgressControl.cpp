#include "controls/gtk/ProgressControl.hpp"

#include <algorithm>

namespace pagora {

ProgressControl::ProgressControl(Gtk::ProgressBar& progressBar)
    : WidgetControl(progressBar)
    , _progressBar(progressBar)
{
}

void ProgressControl::setMinValue(double value)
{
    _minValue = value;
    show();
}

void ProgressControl::setMaxValue(double value)
{
    _maxValue = value;
    show();
}

void ProgressControl::setDoubleValue(double value)
{
    _value = value;
    show();
}

void ProgressControl::show()
{
    const double length = _maxValue - _minValue;
    _progressBar.set_fraction(length > 0 ? std::clamp((_value - _minValue) / length, 0.0, 1.0) : 0);
}

}
