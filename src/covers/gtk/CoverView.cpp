#include "covers/gtk/CoverView.hpp"

#include "covers/gtk/CoverFrame.hpp"

#include <gtkmm/snapshot.h>
#include <gtkmm/stylecontext.h>

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

// Points.
constexpr float cornerRadius = 3;

// Centred in the box and standing on its bottom.
graphene_rect_t placed(Size box, double width, double height)
{
    const double ratio = std::min(box.width / width, box.height / height);
    const double shownWidth = std::max(1.0, std::round(width * ratio));
    const double shownHeight = std::max(1.0, std::round(height * ratio));
    graphene_rect_t rect;
    graphene_rect_init(&rect, static_cast<float>(std::floor((box.width - shownWidth) / 2)),
        static_cast<float>(box.height - shownHeight), static_cast<float>(shownWidth), static_cast<float>(shownHeight));
    return rect;
}

}

CoverView::CoverView(Size box)
    : _box(box)
{
    add_css_class("cover");
    // The item around it has the name.
    g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
    set_halign(Gtk::Align::CENTER);
    set_valign(Gtk::Align::CENTER);
}

void CoverView::setCover(const Glib::RefPtr<Gdk::Texture>& cover)
{
    if (cover == _cover)
        return;
    _cover = cover;
    queue_draw();
}

void CoverView::measure_vfunc(
    Gtk::Orientation orientation, int, int& minimum, int& natural, int& minimumBaseline, int& naturalBaseline) const
{
    minimum = natural = static_cast<int>(orientation == Gtk::Orientation::HORIZONTAL ? _box.width : _box.height);
    minimumBaseline = naturalBaseline = -1;
}

void CoverView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot)
{
    auto* const target = snapshot->gobj();
    const auto rect = _cover ? placed(_box, _cover->get_intrinsic_width(), _cover->get_intrinsic_height())
                             : placed(_box, _box.width, _box.height);
    GskRoundedRect outline;
    gsk_rounded_rect_init_from_rect(&outline, &rect, cornerRadius);
    if (!_cover) {
        GdkRGBA pale = *get_style_context()->get_color().gobj();
        pale.alpha *= 0.07F;
        gtk_snapshot_push_rounded_clip(target, &outline);
        gtk_snapshot_append_color(target, &pale, &rect);
        gtk_snapshot_pop(target);
        return;
    }
    gtk_snapshot_push_rounded_clip(target, &outline);
    gtk_snapshot_append_texture(target, _cover->gobj(), &rect);
    gtk_snapshot_pop(target);
    GdkRGBA line = *get_style_context()->get_color().gobj();
    line.alpha *= 0.12F;
    CoverFrame(outline, static_cast<float>(_box.height / 156), line).append(target, GTK_WIDGET(gobj()));
}

}
