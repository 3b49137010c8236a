#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/togglebutton.h>

#include <vector>

namespace pagora {

// A segmented control over a container whose toggle buttons or radio buttons are the segments, in order. Segment i has
// the tag `firstTag + i`. Main thread only.
class SegmentedSwitch : public SegmentedControl, public WidgetControl {
public:
    explicit SegmentedSwitch(Gtk::Widget& container, int firstTag = 0);
    ~SegmentedSwitch() override;

    // Returns -1 if no segment is selected.
    int selectedSegment() const override { return _selected; }
    void setSelectedSegment(int segment) override;
    int tag(int segment) const override { return _firstTag + segment; }
    void setAction(std::function<void()> action) override { _action = std::move(action); }

private:
    void segmentDidToggle(int segment);

    std::vector<Gtk::Widget*> _segments;
    std::vector<sigc::connection> _toggled;
    int _firstTag;
    int _selected = -1;
    bool _isSelecting = false;
    std::function<void()> _action;
};

}
