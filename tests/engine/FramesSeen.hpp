#pragma once

#include <gtkmm/widget.h>

namespace pagora::test {

// Looks at the edges of a widget, where a page has its margins, in every frame that its window draws.
class FramesSeen {
public:
    // The widget's window is about to be shown.
    explicit FramesSeen(Gtk::Widget& area);
    ~FramesSeen();
    FramesSeen(const FramesSeen&) = delete;
    FramesSeen& operator=(const FramesSeen&) = delete;

    int count() const { return _count; }
    // How much of the margins was white in the whitest frame, from 0 to 1.
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
