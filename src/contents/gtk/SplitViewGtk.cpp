#include "contents/gtk/SplitViewGtk.hpp"

#include "base/Translation.hpp"

#include <gtkmm/eventcontrollerkey.h>

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

// The width in points at each side of the divider where it can be dragged.
constexpr int grabArea = 4;
constexpr double keyStep = 10;

int points(double length)
{
    return static_cast<int>(std::lround(length));
}

}

class SplitViewGtk::Layout : public Gtk::LayoutManager {
public:
    SplitViewGtk* view = nullptr;

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc(const Gtk::Widget&) const override
    {
        return Gtk::SizeRequestMode::CONSTANT_SIZE;
    }

    void measure_vfunc(const Gtk::Widget&, Gtk::Orientation orientation, int, int& minimum, int& natural,
        int& minimumBaseline, int& naturalBaseline) const override
    {
        minimum = natural = 0;
        minimumBaseline = naturalBaseline = -1;
        if (!view)
            return;
        const bool isHorizontal = orientation == Gtk::Orientation::HORIZONTAL;
        int shown = 0;
        for (std::size_t i = 0; i < view->_panes.size(); ++i) {
            int minWidth = 0;
            int wanted = 0;
            int ignored = 0;
            if (view->_hidden[i])
                continue;
            view->_panes[i]->measure(orientation, -1, minWidth, wanted, ignored, ignored);
            ++shown;
            minimum = std::max(minimum, isHorizontal ? std::max(minWidth, minPaneWidth) : minWidth);
            natural = isHorizontal ? natural + wanted : std::max(natural, wanted);
        }
        if (isHorizontal)
            minimum = minimum * shown + 1;
        natural = std::max(natural, minimum);
    }

    void allocate_vfunc(const Gtk::Widget&, int width, int height, int) override
    {
        if (view)
            view->allocate({ static_cast<double>(width), static_cast<double>(height) });
    }
};

SplitViewGtk::SplitViewGtk(Gtk::Box& box)
    : _box(box)
    , _panes { box.get_first_child(), box.get_first_child()->get_next_sibling() }
    , _layout(Glib::make_refptr_for_instance(new Layout))
    , _drag(Gtk::GestureDrag::create())
{
    addDivider();
    _layout->view = this;
    _box.set_layout_manager(_layout);

    // The gesture is attached to the box, whose coordinates do not move with the divider.
    _drag->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _drag->signal_drag_begin().connect([this](double x, double) { dragDidBegin(x); });
    _drag->signal_drag_update().connect([this](double x, double) { dragDivider(_dragStart + x); });
    _box.add_controller(_drag);
}

SplitViewGtk::~SplitViewGtk()
{
    _layout->view = nullptr;
    _box.remove_controller(_drag);
    _box.remove(*_divider);
}

void SplitViewGtk::addDivider()
{
    _divider = Gtk::make_managed<Gtk::Box>();
    _divider->add_css_class("split-divider");
    _divider->set_cursor("col-resize");
    _divider->set_focusable(true);
    _divider->property_accessible_role() = Gtk::Accessible::Role::SEPARATOR;
    gtk_accessible_update_property(
        GTK_ACCESSIBLE(_divider->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, _("Width of the contents"), -1);
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint keyval, guint, Gdk::ModifierType) { return dividerKeyPressed(keyval); }, false);
    _divider->add_controller(keys);
    _box.append(*_divider);
}

void SplitViewGtk::setFrameOfSubview(int subview, const Rect& frame)
{
    if (_frames.at(subview) == frame)
        return;
    _frames[subview] = frame;
    if (!_isAllocating)
        _box.queue_allocate();
}

void SplitViewGtk::setSubviewHidden(int subview, bool hidden)
{
    if (_hidden.at(subview) == hidden)
        return;
    _hidden[subview] = hidden;
    _panes[subview]->set_visible(!hidden);
    _divider->set_visible(!_hidden[0] && !_hidden[1]);
    _box.queue_resize();
    if (_hiddenChanged)
        _hiddenChanged();
}

void SplitViewGtk::dragDivider(double position)
{
    if (!_delegate || _hidden[0])
        return;
    const double minPlace = _delegate->constrainMinCoordinate(0, 0);
    const double maxPlace = std::max(minPlace, _delegate->constrainMaxCoordinate(_size.width, 0));
    const double place = _delegate->constrainSplitPosition(std::clamp(position, minPlace, maxPlace), 0);
    _frames[0].width = place;
    _frames[1].x = place + dividerThickness();
    _frames[1].width = std::max(0.0, _size.width - _frames[1].x);
    _box.queue_allocate();
}

void SplitViewGtk::dragDidBegin(double x)
{
    const double distance = x - _frames[0].width;
    if (_hidden[0] || distance < -grabArea || distance > grabArea + dividerThickness()) {
        _drag->set_state(Gtk::EventSequenceState::DENIED);
        return;
    }
    _drag->set_state(Gtk::EventSequenceState::CLAIMED);
    _dragStart = _frames[0].width;
}

bool SplitViewGtk::dividerKeyPressed(guint keyval)
{
    if (keyval != GDK_KEY_Left && keyval != GDK_KEY_Right)
        return false;
    dragDivider(_frames[0].width + (keyval == GDK_KEY_Left ? -keyStep : keyStep));
    return true;
}

void SplitViewGtk::allocate(const Size& size)
{
    _isAllocating = true;
    const Size oldSize = std::exchange(_size, size);
    if (size != oldSize && _delegate)
        _delegate->resizeSubviewsWithOldSize(oldSize);
    else if (size != oldSize) {
        _frames[0].height = _frames[1].height = size.height;
        _frames[1].x = _hidden[0] ? 0 : _frames[0].width + dividerThickness();
        _frames[1].width = std::max(0.0, size.width - _frames[1].x);
    }
    _isAllocating = false;

    for (std::size_t i = 0; i < _panes.size(); ++i) {
        const int left = points(_frames[i].x);
        const int right = points(_frames[i].x + _frames[i].width);
        if (_panes[i]->should_layout())
            _panes[i]->size_allocate({ left, 0, right - left, points(size.height) }, -1);
    }
    if (_divider->should_layout())
        _divider->size_allocate({ points(_frames[0].width) - grabArea, 0, 2 * grabArea + 1, points(size.height) }, -1);
}

}
