#pragma once

#include "library_views/DraggingInfo.hpp"

#include <gtkmm/dropcontrollermotion.h>
#include <gtkmm/droptarget.h>
#include <gtkmm/widget.h>

#include <functional>
#include <string>

namespace pagora {

// A drag of files over a widget.
struct DropHover {
    enum class State { Away, Taken, Refused };
    State state = State::Away;
    // The reason of a rejection, for the user.
    std::string why;
    bool operator==(const DropHover&) const = default;
};

// Accepts dropped files on a widget for a delegate that validates them. Main thread only.
class FileDropTarget {
public:
    // Returns the delegate, or null if files are not accepted.
    using Delegate = std::function<DropDelegate*()>;

    // `hovers` is called when a drag enters or leaves the widget.
    FileDropTarget(Gtk::Widget& widget, Delegate delegate, std::function<void(const DropHover&)> hovers);
    ~FileDropTarget();
    FileDropTarget(const FileDropTarget&) = delete;
    FileDropTarget& operator=(const FileDropTarget&) = delete;

    // Maps the source's actions. A source that allows more than a copy is `Generic`; the files are always copied.
    static DragOperation::Mask operationsOf(Gdk::DragAction actions);

private:
    DraggingInfo drag() const;
    Gdk::DragAction judge();
    Gdk::DragAction judgeAgain();
    bool drop();
    void tell(DropHover hover);

    Gtk::Widget& _widget;
    Delegate _delegate;
    std::function<void(const DropHover&)> _hovers;
    Glib::RefPtr<Gtk::DropTarget> _target;
    // Also reports rejected files that leave.
    Glib::RefPtr<Gtk::DropControllerMotion> _motion;
    Gdk::DragAction _judged = {};
    Gdk::DragAction _answer = {};
    DropHover _hover;
};

}
