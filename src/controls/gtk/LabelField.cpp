#include "controls/gtk/LabelField.hpp"

#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"

namespace pagora {

LabelField::LabelField(Gtk::Label& label)
    : WidgetControl(label)
    , _label(&label)
    , _text(label.get_text())
{
    if (isStatus(label))
        makeStatus(label);
}

LabelField::LabelField(Gtk::TextView& textView)
    : WidgetControl(textView)
    , _textView(&textView)
    , _text(textView.get_buffer()->get_text())
{
}

void LabelField::setStringValue(const std::string& text)
{
    _text = text;
    if (_textView)
        return _textView->get_buffer()->set_text(displayText(text));
    _label->set_text(displayText(text));
    // The toolkit does not report a label's new text to assistive technology. A status is announced explicitly.
    if (isStatus(*_label))
        setAccessibleName(*_label, _label->get_text());
}

void LabelField::sizeToFit()
{
    if (!_label)
        return;
    _label->set_size_request(-1, -1);
    int minimum = 0;
    int natural = 0;
    int ignored = 0;
    _label->measure(Gtk::Orientation::HORIZONTAL, -1, minimum, natural, ignored, ignored);
    _label->set_size_request(natural, -1);
}

}
