#pragma once

#include "library_views/DraggingInfo.hpp"

#include <gtkmm/droptarget.h>
#include <gtkmm/widget.h>

#include <functional>

namespace pagora {

// Takes files that are dropped on a widget, for a delegate that judges them first. Main thread.
class FileDropTarget {
public:
    // Null for nobody who takes files now.
    using Delegate = std::function<DropDelegate*()>;

    // `isOver` hears of files that come over the widget and would be taken, and when they leave.
    FileDropTarget(Gtk::Widget& widget, Delegate delegate, std::function<void(bool)> isOver);
    ~FileDropTarget();
    FileDropTarget(const FileDropTarget&) = delete;
    FileDropTarget& operator=(const FileDropTarget&) = delete;

    // What a source allows, of which copying is all that is ever done. A source leaves the decision to the destination
    // when it allows more than a copy.
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
