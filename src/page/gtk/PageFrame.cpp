#include "page/gtk/PageFrame.hpp"

#include <glibmm/main.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/snapshot.h>

#include <algorithm>
#include <utility>

namespace pagora {

namespace {

bool scrollsPages(guint key)
{
    switch (key) {
    case GDK_KEY_Left:
    case GDK_KEY_Right:
    case GDK_KEY_Up:
    case GDK_KEY_Down:
    case GDK_KEY_Page_Up:
    case GDK_KEY_Page_Down:
    case GDK_KEY_Home:
    case GDK_KEY_End:
    case GDK_KEY_space:
    case GDK_KEY_KP_Left:
    case GDK_KEY_KP_Right:
    case GDK_KEY_KP_Up:
    case GDK_KEY_KP_Down:
    case GDK_KEY_KP_Page_Up:
    case GDK_KEY_KP_Page_Down:
    case GDK_KEY_KP_Home:
    case GDK_KEY_KP_End:
    case GDK_KEY_KP_Space:
        return true;
    default:
        return false;
    }
}

}

PageFrame::PageFrame(GtkWidget* child)
    : Glib::ObjectBase("PagoraPageFrame")
    , _child(child)
    , _gestures(*this)
{
    gtk_widget_set_parent(child, gobj());
    set_hexpand(true);
    set_vexpand(true);
    set_overflow(Gtk::Overflow::HIDDEN);
    swallowKeys();
}

PageFrame::~PageFrame()
{
    _sizeReport.disconnect();
    gtk_widget_unparent(_child);
}

void PageFrame::swallowKeys()
{
    auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) { return !_pageTakesKeys && scrollsPages(key); }, false);
    add_controller(keys);
}

void PageFrame::cover(PageCover::Show show)
{
    _cover.put(_child, show);
    queue_draw();
}

void PageFrame::uncover()
{
    _cover.remove();
    queue_draw();
}

void PageFrame::showPicture(GObjectPtr<GdkTexture> picture, int scale)
{
    _cover.give(std::move(picture), scale);
    queue_draw();
}

void PageFrame::withdrawPicture()
{
    _cover.withdraw();
    queue_draw();
}

GObjectPtr<GdkTexture> PageFrame::pictureOfPage()
{
    if (_isConcealed || _cover.isOn())
        return {};
    return PageCover::pictureNow(Gtk::Widget::gobj(), _child);
}

void PageFrame::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
    int& minimumBaseline, int& naturalBaseline) const
{
    gtk_widget_measure(_child, static_cast<GtkOrientation>(orientation), forSize, &minimum, &natural, nullptr, nullptr);
    minimumBaseline = naturalBaseline = -1;
}

void PageFrame::setMargins(const Margins& margins)
{
    _margins = margins;
    queue_allocate();
}

void PageFrame::setPaper(const std::string& color)
{
    Gdk::RGBA paper;
    const auto before = std::exchange(_paper, paper.set(color) ? std::optional(paper) : std::nullopt);
    if (before != _paper)
        queue_draw();
    if (_onPaper)
        _onPaper(_paper
                ? std::optional(Color { paper.get_red(), paper.get_green(), paper.get_blue(), paper.get_alpha() })
                : std::nullopt);
}

void PageFrame::setConcealed(bool isConcealed)
{
    _isConcealed = isConcealed;
    queue_draw();
}

void PageFrame::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot)
{
    if (!_isConcealed) {
        if (_paper)
            snapshot->append_color(*_paper, Gdk::Rectangle(0, 0, get_width(), get_height()));
        _cover.draw(Gtk::Widget::gobj(), _child, snapshot->gobj());
        return;
    }
    // The engine produces the next frame only after the last one was drawn. It is drawn into a snapshot that is
    // discarded, because GTK caches what is clipped away.
    GtkSnapshot* const unseen = gtk_snapshot_new();
    _cover.draw(Gtk::Widget::gobj(), _child, unseen);
    if (GskRenderNode* const drawing = gtk_snapshot_free_to_node(unseen))
        gsk_render_node_unref(drawing);
}

void PageFrame::size_allocate_vfunc(int width, int height, int baseline)
{
    const int room = std::max(1, width - 2 * _margins.minSide);
    const int pageWidth = std::min(room, _margins.maxWidth);
    const graphene_point_t place { static_cast<float>((width - pageWidth) / 2), 0 };
    gtk_widget_allocate(_child, pageWidth, height, baseline, gsk_transform_translate(nullptr, &place));
    if (pageWidth == _width && height == _height)
        return;
    _width = pageWidth;
    _height = height;
    // Deferred, because the handler may change the layout that is in progress.
    _sizeReport.disconnect();
    _sizeReport = Glib::signal_idle().connect(
        [this] {
            if (_onResize)
                _onResize();
            return false;
        },
        Glib::PRIORITY_HIGH_IDLE);
}

}
