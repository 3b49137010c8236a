#pragma once

#include "controls/Controls.hpp"

#include <cstdint>
#include <string>

namespace pagora {

// The location slider and the label beside it. A longer label takes its width from the slider. Used by both readers.
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
    // Shows the percentage of the book before the page.
    void setPercentage(std::int32_t percent);

    Slider& slider() { return _locSlider; }
    TextField& label() { return _locLabel; }

private:
    TextField& _locLabel;
    Slider& _locSlider;
};

}
