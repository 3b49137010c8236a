#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/progressbar.h>

namespace pagora {

// A progress bar of a layout.
class ProgressControl : public ProgressIndicator, public WidgetControl {
public:
    explicit ProgressControl(Gtk::ProgressBar& progressBar);

    void setMinValue(double value) override;
    void setMaxValue(double value) override;
    void setDoubleValue(double value) override;

    double minValue() const { return _minValue; }
    double maxValue() const { return _maxValue; }
    double doubleValue() const { return _value; }

private:
    void show();

    Gtk::ProgressBar& _progressBar;
    double _minValue = 0;
    double _maxValue = 1;
    double _value = 0;
};

}
