#include "controls/gtk/SegmentedSwitch.hpp"

#include <gtkmm/checkbutton.h>

namespace pagora {

namespace {

bool isActive(const Gtk::Widget& segment)
{
    bool active = false;
    segment.get_property("active", active);
    return active;
}

}

SegmentedSwitch::SegmentedSwitch(Gtk::Widget& container, int firstTag)
    : WidgetControl(container)
    , _firstTag(firstTag)
{
    for (auto* child = container.get_first_child(); child; child = child->get_next_sibling()) {
        const auto segment = static_cast<int>(_segments.size());
        const auto toggled = [this, segment] { segmentDidToggle(segment); };
        if (auto* const toggle = dynamic_cast<Gtk::ToggleButton*>(child))
            _toggled.push_back(toggle->signal_toggled().connect(toggled));
        else if (auto* const radio = dynamic_cast<Gtk::CheckButton*>(child))
            _toggled.push_back(radio->signal_toggled().connect(toggled));
        else
            continue;
        _segments.push_back(child);
        if (isActive(*child))
            _selected = segment;
    }
}

SegmentedSwitch::~SegmentedSwitch()
{
    for (auto& connection : _toggled)
        connection.disconnect();
}

void SegmentedSwitch::setSelectedSegment(int segment)
{
    if (segment < 0 || segment >= static_cast<int>(_segments.size()))
        return;
    _isSelecting = true;
    _selected = segment;
    for (int i = 0; i < static_cast<int>(_segments.size()); ++i)
        _segments[i]->set_property("active", i == segment);
    _isSelecting = false;
}

void SegmentedSwitch::segmentDidToggle(int segment)
{
    if (_isSelecting)
        return;
    if (!isActive(*_segments[segment])) {
        // The buttons do not form a GTK group, so the selected one stays selected here.
        if (segment == _selected)
            setSelectedSegment(segment);
        return;
    }
    if (segment == _selected)
        return;
    setSelectedSegment(segment);
    if (const auto action = _action)
        action();
}

}
