#pragma once

#include "controls/Controls.hpp"

#include <cstdint>
#include <string>

namespace pagora {

// The location slider and the label beside it, as both readers use them: the label grows to the left into the slider.
// Main thread only.
class LocationBar {
public:
    LocationBar(TextField& locLabel, Slider& locSlider)
        : _locLabel(locLabel)
        , _locSlider(locSlider)
    {
    }

    // Shows the text. Fits the label to it and gives the slider the remaining width.
    void setLabelMessage(const std::string& text);
    // Shows how much of the book lies before the page.
    void setPercentage(std::int32_t percent);

    Slider& slider() { return _locSlider; }
    TextField& label() { return _locLabel; }

private:
    TextField& _locLabel;
    Slider& _locSlider;
};

}
