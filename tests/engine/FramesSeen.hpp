#pragma once

#include <gtkmm/widget.h>

namespace pagora::test {

// Measures the edges of a widget, where a page has its margins, in every frame of its window.
class FramesSeen {
public:
    // Must be created before the widget's window is shown.
    explicit FramesSeen(Gtk::Widget& area);
    ~FramesSeen();
    FramesSeen(const FramesSeen&) = delete;
    FramesSeen& operator=(const FramesSeen&) = delete;

    int count() const { return _count; }
    // The maximum white fraction of the margins in one frame, from 0 to 1.
    double maxWhite() const { return _maxWhite; }

private:
    void look();

    GtkWidget* _area;
    GdkPaintable* _paintable;
    GskRenderer* _renderer;
    GdkFrameClock* _clock;
    gulong _painted;
    int _count = 0;
    double _maxWhite = 0;
};

}
