#pragma once

#include "base/Geometry.hpp"

#include <gdkmm/texture.h>
#include <gtkmm/widget.h>

#include <optional>

namespace pagora {

// A book's cover in a box of fixed size: as large as its aspect ratio allows, horizontally centred, at the bottom. The
// box never changes size, so a cover that arrives causes a redraw but no layout. Main thread only.
class CoverView : public Gtk::Widget {
public:
    // `box` is in points.
    explicit CoverView(Size box);

    // Null draws a pale placeholder.
    void setCover(const Glib::RefPtr<Gdk::Texture>& cover);
    const Glib::RefPtr<Gdk::Texture>& cover() const { return _cover; }
    // Sets the progress line below the box, from 0 to 1; nullopt for no line.
    void setProgress(std::optional<double> progress);
    std::optional<double> progress() const { return _progress; }

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override { return Gtk::SizeRequestMode::CONSTANT_SIZE; }
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural, int& minimumBaseline,
        int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    void appendProgress(GtkSnapshot* snapshot, const graphene_rect_t& cover) const;

    Size _box;
    Glib::RefPtr<Gdk::Texture> _cover;
    std::optional<double> _progress;
};

}
