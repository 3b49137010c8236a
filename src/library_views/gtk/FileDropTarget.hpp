#pragma once

#include "library_views/DraggingInfo.hpp"

#include <gtkmm/droptarget.h>
#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// Accepts dropped files on a widget for a delegate that validates them. Main thread.
class FileDropTarget {
public:
    // Null when files are not accepted.
    using Delegate = std::function<DropDelegate*()>;

    // `isOver` hears of files that come over the widget and would be taken, and when they leave.
    FileDropTarget(Gtk::Widget& widget, Delegate delegate, std::function<void(bool)> isOver);
    ~FileDropTarget();
    FileDropTarget(const FileDropTarget&) = delete;
    FileDropTarget& operator=(const FileDropTarget&) = delete;

    // The source's actions, of which only copying is used. A source that allows more than a copy leaves the choice to
    // the destination.
    static DragOperation::Mask operationsOf(Gdk::DragAction actions);

private:
    DraggingInfo drag() const;
    Gdk::DragAction judge();
    Gdk::DragAction judgeAgain();
    bool drop();
    void setOver(bool isOver);

    Gtk::Widget& _widget;
    Delegate _delegate;
    std::function<void(bool)> _isOver;
    Glib::RefPtr<Gtk::DropTarget> _target;
    Gdk::DragAction _judged = {};
    Gdk::DragAction _answer = {};
    bool _over = false;
};

}
