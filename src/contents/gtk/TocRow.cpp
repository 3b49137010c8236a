#include "contents/gtk/TocRow.hpp"

#include "contents/tocLinkTextField.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "desktop/gtk/TextScale.hpp"
#include "desktop/gtk/Tooltip.hpp"

#include <gtkmm/snapshot.h>

#include <algorithm>
#include <cmath>

namespace pagora {

namespace {

constexpr std::size_t maxTextLength = 1'000;
// The space after the text, in points.
constexpr double endInset = 8;

Gdk::RGBA rgba(const Color& color)
{
    Gdk::RGBA result;
    result.set_rgba(static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue),
        static_cast<float>(color.alpha));
    return result;
}

}

TocRow::TocRow()
{
    add_css_class("contents-row");
    set_hexpand(true);
    // Titles are indented from the left, also in right-to-left interfaces.
    set_direction(Gtk::TextDirection::LTR);
    // The list item around this widget has the role and the name.
    g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
    showOnHover(*this, [this] { return _link ? displayText(_link->toolTip(), maxTextLength) : Glib::ustring(); });
}

void TocRow::setLink(const tocLinkTextField* link)
{
    _link = link;
    if (link)
        set_cursor("pointer");
    else
        set_cursor();
    queue_draw();
}

int TocRow::rowHeight()
{
    return static_cast<int>(std::lround(tocLinkTextField::height * textScale()));
}

void TocRow::measure_vfunc(
    Gtk::Orientation orientation, int, int& minimum, int& natural, int& minimumBaseline, int& naturalBaseline) const
{
    minimumBaseline = naturalBaseline = -1;
    minimum = natural = orientation == Gtk::Orientation::VERTICAL ? rowHeight() : 0;
}

void TocRow::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot)
{
    if (!_link)
        return;
    const int width = get_width();
    const int height = get_height();
    if (_link->backgroundColor().alpha > 0)
        snapshot->append_color(rgba(_link->backgroundColor()), Gdk::Rectangle(0, 0, width, height));

    const double indent = std::max(0.0, _link->firstLineHeadIndent() * textScale());
    const double room = width - indent - endInset;
    if (room <= 0)
        return;
    const auto layout = create_pango_layout(displayText(_link->text(), maxTextLength));
    layout->set_single_paragraph_mode(true);
    layout->set_ellipsize(Pango::EllipsizeMode::END);
    layout->set_width(static_cast<int>(room * Pango::SCALE));
    layout->set_auto_dir(false);
    int textWidth = 0;
    int textHeight = 0;
    layout->get_pixel_size(textWidth, textHeight);
    const int top = (height - textHeight) / 2;
    const graphene_point_t place { static_cast<float>(indent), static_cast<float>(top) };
    gtk_snapshot_save(snapshot->gobj());
    gtk_snapshot_translate(snapshot->gobj(), &place);
    snapshot->append_layout(layout, rgba(_link->textColor()));
    gtk_snapshot_restore(snapshot->gobj());
}

}
