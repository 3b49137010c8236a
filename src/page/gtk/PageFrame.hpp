#pragma once

#include "base/Geometry.hpp"
#include "page/gtk/PageCover.hpp"
#include "page/gtk/PageGestures.hpp"

#include <gdkmm/rgba.h>
#include <gtkmm/widget.h>

#include <functional>
#include <limits>
#include <optional>
#include <string>

namespace pagora {

// Contains the engine's widget: allocates it within the margins, reports size changes, and intercepts input that would
// scroll the page. Main thread only.
class PageFrame final : public Gtk::Widget {
public:
    // `child` stays in the frame until the frame is destroyed.
    explicit PageFrame(GtkWidget* child);
    ~PageFrame() override;

    // The minimum margin at each side and the maximum width of the child, in pixels. The child is centred.
    struct Margins {
        int minSide = 0;
        int maxWidth = std::numeric_limits<int>::max();
    };
    void setMargins(const Margins& margins);
    // Sets the colour of the margins, in CSS syntax. An invalid colour paints nothing.
    void setPaper(const std::string& color);
    const std::optional<Gdk::RGBA>& paper() const { return _paper; }
    // Sets the callback for the colour of the margins.
    void setPaperHandler(std::function<void(const std::optional<Color>&)> handler) { _onPaper = std::move(handler); }
    // The width of the child, in pixels.
    int pageWidth() const { return _width; }
    int pageHeight() const { return _height; }

    // Sets the callback for a new size of the child. It is called once for each size, after the layout.
    void setResizeHandler(std::function<void()> handler) { _onResize = std::move(handler); }
    // Sets the callback for a flick or a drag. The distance is positive if the fingers move the page to the right.
    void setFlickHandler(std::function<void(double)> handler) { _gestures.setFlickHandler(std::move(handler)); }
    // Hides the child. It is still drawn off screen, so that it is current when it is shown.
    void setConcealed(bool isConcealed);
    bool isConcealed() const { return _isConcealed; }
    // Sets whether a control in the page needs the keys that would otherwise scroll.
    void setPageTakesKeys(bool takes) { _pageTakesKeys = takes; }
    bool pageTakesKeys() const { return _pageTakesKeys; }
    // Draws the last drawing of the page, or nothing, until it is uncovered.
    void cover(PageCover::Show show);
    void uncover();
    bool isCovered() const { return _cover.isOn(); }
    // If the page is covered, draws a picture in its place, provided that the page has the same size.
    void showPicture(GObjectPtr<GdkTexture> picture, int scale);
    void withdrawPicture();
    bool showsPicture() const { return _cover.drawsGiven(_child); }
    // Returns a picture of the child as it would be drawn now; null if it is not on a screen.
    GObjectPtr<GdkTexture> pictureOfPage();

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
    std::optional<Gdk::RGBA> _paper;
    int _width = 0;
    int _height = 0;
    bool _isConcealed = false;
    bool _pageTakesKeys = false;
    PageCover _cover;
    PageGestures _gestures;
    std::function<void()> _onResize;
    std::function<void(const std::optional<Color>&)> _onPaper;
    sigc::connection _sizeReport;
};

}
