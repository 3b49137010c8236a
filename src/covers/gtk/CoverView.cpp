#include "covers/gtk/CoverView.hpp"

#include "covers/gtk/CoverFrame.hpp"

#include <gtkmm/snapshot.h>
#include <gtkmm/stylecontext.h>

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

// In points.
constexpr float cornerRadius = 3;

// Returns the rectangle that is horizontally centred in the box, at its bottom.
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
    // The item around this widget has the accessible name.
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

void CoverView::setProgress(std::optional<double> progress)
{
    if (progress == _progress)
        return;
    _progress = progress;
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
    appendProgress(target, rect);
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

void CoverView::appendProgress(GtkSnapshot* snapshot, const graphene_rect_t& cover) const
{
    if (!_progress)
        return;
    const auto style = const_cast<CoverView*>(this)->get_style_context();
    GdkRGBA rest = *style->get_color().gobj();
    rest.alpha *= 0.18F;
    const Gdk::RGBA text = style->get_color();
    Gdk::RGBA read = text;
    // The colour is moved toward the text colour, so that it is visible on light and dark backgrounds.
    if (style->lookup_color("theme_selected_bg_color", read)) {
        const auto mixed = [](float color, float other) { return 0.7F * color + 0.3F * other; };
        read.set_rgba(mixed(read.get_red(), text.get_red()), mixed(read.get_green(), text.get_green()),
            mixed(read.get_blue(), text.get_blue()));
    }
    // The line is thinner and nearer to a small cover.
    const float size = static_cast<float>(_box.height / 156);
    const float height = std::max(2.0F, std::round(3 * size));
    const float top = static_cast<float>(_box.height) + std::max(2.0F, std::round(5 * size));
    const auto append = [&](float x, float width, const GdkRGBA& color) {
        const graphene_rect_t line { { x, top }, { width, height } };
        GskRoundedRect ends;
        gsk_rounded_rect_init_from_rect(&ends, &line, height / 2);
        gtk_snapshot_push_rounded_clip(snapshot, &ends);
        gtk_snapshot_append_color(snapshot, &color, &line);
        gtk_snapshot_pop(snapshot);
    };
    const float whole = cover.size.width;
    const float done = std::max(height, whole * static_cast<float>(*_progress));
    const bool isMirrored = gtk_widget_get_direction(const_cast<GtkWidget*>(GTK_WIDGET(gobj()))) == GTK_TEXT_DIR_RTL;
    append(cover.origin.x, whole, rest);
    append(isMirrored ? cover.origin.x + whole - done : cover.origin.x, done, *read.gobj());
}

}
