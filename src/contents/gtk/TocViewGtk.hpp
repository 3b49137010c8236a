#pragma once

#include "contents/TocView.hpp"
#include "contents/gtk/ActionQueue.hpp"

#include <gtkmm/listitem.h>
#include <gtkmm/listview.h>
#include <gtkmm/scrolledwindow.h>

#include <functional>
#include <optional>
#include <unordered_map>

namespace pagora {

class TocRow;

// The contents pane over a list view of a layout. Rows exist only for the visible links. This class alone converts the
// bottom-left coordinates of the links to the list's scroll position. Main thread only.
class TocViewGtk : public TocView {
public:
    // The widgets and the queue must outlive this object. Links are opened through the queue.
    TocViewGtk(Gtk::ListView& list, Gtk::ScrolledWindow& clip, ActionQueue& queue);
    ~TocViewGtk() override;

    Rect frame() const override;
    void setFrame(const Rect& frame) override { _height = frame.height; }
    double clipHeight() const override;
    void removeAllSubviews() override;
    void addSubviews(const std::vector<tocLinkTextField*>& links) override;
    void setNeedsDisplay(std::int64_t tag) override;
    void scrollToPoint(double x, double y) override;

    // Returns the link at that distance from the top of the visible area; null if there is none.
    tocLinkTextField* linkAt(double y) const;
    // Returns the text of the active link; empty if there is none.
    std::string activeTitle() const;
    // Sets the callback for possible changes of the links or the active link.
    void setLinksChanged(std::function<void()> handler) { _linksChanged = std::move(handler); }
    bool hasLinks() const { return !_links.empty(); }
    std::size_t numberOfRows() const { return _rows.size(); }

private:
    void connectRows();
    void connectPointer();
    void connectKeys();
    bool keyPressed(guint keyval, Gdk::ModifierType state);
    // Focuses the next link whose text begins with the typed letters.
    void type(gunichar character);
    void focus(std::int64_t tag);
    // Returns the tag of the link that has the keyboard focus.
    std::optional<std::int64_t> focused() const;
    void bind(const Glib::RefPtr<Gtk::ListItem>& item);
    void unbind(const Glib::RefPtr<Gtk::ListItem>& item);
    void describe(TocRow& row);
    void tellLinksChanged();
    void scrollWherePending();
    void pointerIsAt(std::optional<double> y);
    void open(std::int64_t tag);
    tocLinkTextField* linkWithTag(std::int64_t tag) const;

    Gtk::ListView& _list;
    Gtk::ScrolledWindow& _clip;
    ActionQueue& _queue;
    // The links by tag; null for an entry without a link.
    std::vector<tocLinkTextField*> _links;
    std::unordered_map<std::int64_t, TocRow*> _rows;
    std::optional<double> _height;
    // The requested bottom edge of the visible area, while the list has no height yet.
    std::optional<double> _pendingBottom;
    std::optional<double> _pointerY;
    std::optional<std::int64_t> _hovered;
    // The typed letters, case-folded, and the time of the monotonic clock at which the search ends.
    Glib::ustring _typed;
    gint64 _typingEnds = 0;
    std::function<void()> _linksChanged;
    // Incremented with each list, so that a click on an earlier list opens nothing.
    std::uint64_t _generation = 0;
    std::vector<Glib::RefPtr<Gtk::EventController>> _controllers;
    std::vector<sigc::connection> _connections;
};

}
