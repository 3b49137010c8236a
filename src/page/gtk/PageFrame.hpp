#pragma once

#include "page/gtk/PageCover.hpp"
#include "page/gtk/PageGestures.hpp"

#include <gtkmm/widget.h>

#include <functional>
#include <limits>

namespace pagora {

// Holds the engine's widget: gives it its room but for the margins, tells of changes of size, and takes the input that
// would scroll the page before the engine sees it. Main thread.
class PageFrame final : public Gtk::Widget {
public:
    // `child` is shown until the frame goes.
    explicit PageFrame(GtkWidget* child);
    ~PageFrame() override;

    // Pixels that are left free at each side, and how wide the child is at most; it stays in the middle.
    struct Margins {
        int least = 0;
        int largestWidth = std::numeric_limits<int>::max();
    };
    void setMargins(const Margins& margins);
    // Of the child, in pixels.
    int pageWidth() const { return _width; }
    int pageHeight() const { return _height; }

    // Called after the layout that changed the child's size, once a size.
    void setResizeHandler(std::function<void()> handler) { _onResize = std::move(handler); }
    // Called once a flick, or a finger's drag: positive when the fingers move the page to the right.
    void setFlickHandler(std::function<void(double)> handler) { _gestures.setFlickHandler(std::move(handler)); }
    // Whether nothing of the child is seen. It is drawn all the same, so that what it shows later is up to date.
    void setConcealed(bool isConcealed);
    bool isConcealed() const { return _isConcealed; }
    // Whether a control in the page needs the keys that would otherwise scroll.
    void setPageTakesKeys(bool takes) { _pageTakesKeys = takes; }
    bool pageTakesKeys() const { return _pageTakesKeys; }
    // Draws the page as it was drawn last, or nothing, until it is uncovered.
    void cover(PageCover::Show show);
    void uncover();
    bool isCovered() const { return _cover.isOn(); }

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override { return Gtk::SizeRequestMode::CONSTANT_SIZE; }
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural, int& minimumBaseline,
        int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    void swallowKeys();

    GtkWidget* _child;
    Margins _margins;
    int _width = 0;
    int _height = 0;
    bool _isConcealed = false;
    bool _pageTakesKeys = false;
    PageCover _cover;
    PageGestures _gestures;
    std::function<void()> _onResize;
    sigc::connection _sizeReport;
};

}
