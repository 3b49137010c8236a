#pragma once

#include "contents/SplitView.hpp"

#include <gtkmm/box.h>
#include <gtkmm/gesturedrag.h>
#include <gtkmm/layoutmanager.h>

#include <array>

namespace pagora {

// A split view over a box whose first two children are the panes. The box must outlive this object. The divider is one
// point wide and invisible, with a wider area for the pointer. Main thread only.
class SplitViewGtk : public SplitView {
public:
    explicit SplitViewGtk(Gtk::Box& box);
    ~SplitViewGtk() override;
    SplitViewGtk(const SplitViewGtk&) = delete;
    SplitViewGtk& operator=(const SplitViewGtk&) = delete;

    void setDelegate(SplitViewDelegate* delegate) override { _delegate = delegate; }
    Rect frame() const override { return { 0, 0, _size.width, _size.height }; }
    double dividerThickness() const override { return 1; }
    Rect frameOfSubview(int subview) const override { return _frames.at(subview); }
    void setFrameOfSubview(int subview, const Rect& frame) override;
    bool isSubviewHidden(int subview) const override { return _hidden.at(subview); }
    void setSubviewHidden(int subview, bool hidden) override;

    // Sets the callback for a pane that was shown or hidden.
    void setHiddenChanged(std::function<void()> hiddenChanged) { _hiddenChanged = std::move(hiddenChanged); }
    // Moves the divider as a drag to that position does.
    void dragDivider(double position);

private:
    class Layout;
    // Lays out the panes in a box of that size, as the delegate decides.
    void allocate(const Size& size);
    void addDivider();
    void dragDidBegin(double x);
    bool dividerKeyPressed(guint keyval);

    Gtk::Box& _box;
    std::array<Gtk::Widget*, 2> _panes;
    Gtk::Widget* _divider = nullptr;
    SplitViewDelegate* _delegate = nullptr;
    Size _size { 1100, 720 };
    std::array<Rect, 2> _frames { Rect { 0, 0, 260, 720 }, Rect { 261, 0, 839, 720 } };
    std::array<bool, 2> _hidden { false, false };
    bool _isAllocating = false;
    double _dragStart = 0;
    Glib::RefPtr<Layout> _layout;
    Glib::RefPtr<Gtk::GestureDrag> _drag;
    std::function<void()> _hiddenChanged;
};

}
