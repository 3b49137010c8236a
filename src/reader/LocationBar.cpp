#include "reader/LocationBar.hpp"

#include "base/Translation.hpp"

namespace pagora {

void LocationBar::setLabelMessage(const std::string& text)
{
    const Rect old = _locLabel.frame();
    _locLabel.setStringValue(text);
    _locLabel.sizeToFit();
    Rect fitted = _locLabel.frame();
    const double grown = fitted.width - old.width;
    if (grown == 0)
        return;
    fitted.x = old.x - grown;
    _locLabel.setFrame(fitted);
    Rect slider = _locSlider.frame();
    slider.width -= grown;
    _locSlider.setFrame(slider);
}

void LocationBar::setPercentage(std::int32_t percent)
{
    setLabelMessage(formatted(_("%d %%"), percent));
}

}
