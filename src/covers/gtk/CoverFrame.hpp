#pragma once

#include <gtk/gtk.h>

namespace pagora {

// Draws the shadows and the edge line of a cover. Main thread.
class CoverFrame {
public:
    // In the coordinates of the outline. `lift` is the elevation that the shadows suggest, in points.
    CoverFrame(const GskRoundedRect& outline, float lift, const GdkRGBA& line)
        : _outline(outline)
        , _lift(lift)
        , _line(line)
    {
    }

    // Draws it over the cover, for a widget.
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
