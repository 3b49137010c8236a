#pragma once

#include <gtk/gtk.h>

namespace pagora {

// Draws the shadows and the edge line of a cover. Main thread only.
class CoverFrame {
public:
    // `outline` is in the coordinates of the snapshot. `lift` is the elevation that the shadows suggest, in points.
    CoverFrame(const GskRoundedRect& outline, float lift, const GdkRGBA& line)
        : _outline(outline)
        , _lift(lift)
        , _line(line)
    {
    }

    // Draws the frame over the widget's cover.
    void append(GtkSnapshot* snapshot, GtkWidget* widget) const;

private:
    struct Picture;

    void appendNodes(GtkSnapshot* snapshot) const;
    // The nodes rendered to a texture that all covers of that size share.
    const Picture& picture(int pixelsInPoint) const;
    Picture drawn(int pixelsInPoint) const;

    GskRoundedRect _outline;
    float _lift;
    GdkRGBA _line;
};

}
