#include "library_views/gtk/FileDropTarget.hpp"

#include <gdkmm/drop.h>
#include <glib.h>

namespace pagora {

namespace {

bool holds(Gdk::DragAction actions, Gdk::DragAction action)
{
    return (actions & action) != Gdk::DragAction();
}

// Returns the paths of the dropped files. Remote files that are not mounted have no path and are omitted.
std::vector<std::string> pathsOf(const GValue& value)
{
    std::vector<std::string> paths;
    GSList* const files = gdk_file_list_get_files(static_cast<GdkFileList*>(g_value_get_boxed(&value)));
    for (const auto* each = files; each; each = each->next) {
        if (const auto* const path = g_file_peek_path(G_FILE(each->data)))
            paths.emplace_back(path);
    }
    g_slist_free(files);
    return paths;
}

// Returns the actions that the source allows. On Wayland they do not change during a drag, and GTK reports only the
// chosen action later, so the first report is stored with the drag.
Gdk::DragAction allowedActions(const Gdk::Drop& drop)
{
    static constexpr const char* key = "pagora-allowed-actions";
    const auto reported = drop.get_actions();
    auto* const object = const_cast<GdkDrop*>(drop.gobj());
    if (g_strcmp0(G_OBJECT_TYPE_NAME(object), "GdkWaylandDrop") != 0)
        return reported;
    if (const auto first = GPOINTER_TO_UINT(g_object_get_data(G_OBJECT(object), key)); first != 0)
        return static_cast<Gdk::DragAction>(first);
    g_object_set_data(G_OBJECT(object), key, GUINT_TO_POINTER(static_cast<guint>(reported)));
    return reported;
}

}

FileDropTarget::FileDropTarget(Gtk::Widget& widget, Delegate delegate, std::function<void(const DropHover&)> hovers)
    : _widget(widget)
    , _delegate(std::move(delegate))
    , _hovers(std::move(hovers))
    , _target(Gtk::DropTarget::create(GDK_TYPE_FILE_LIST, Gdk::DragAction::COPY))
    , _motion(Gtk::DropControllerMotion::create())
{
    // The names are preloaded, because the desktop may provide them only once.
    _target->set_preload(true);
    _target->signal_enter().connect([this](double, double) { return judge(); }, false);
    _target->signal_motion().connect([this](double, double) { return judgeAgain(); }, false);
    _motion->signal_leave().connect([this] { tell({}); });
    _target->signal_drop().connect([this](const Glib::ValueBase&, double, double) { return drop(); }, false);
    _target->connect_property_changed("value", [this] {
        if (gtk_drop_target_get_value(_target->gobj()) && judge() == Gdk::DragAction())
            _target->reject();
    });
    widget.add_controller(_target);
    widget.add_controller(_motion);
}

FileDropTarget::~FileDropTarget()
{
    _hovers = nullptr;
    _delegate = [] { return nullptr; };
    _widget.remove_controller(_target);
    _widget.remove_controller(_motion);
}

DragOperation::Mask FileDropTarget::operationsOf(Gdk::DragAction actions)
{
    DragOperation::Mask operations = DragOperation::None;
    const bool copies = holds(actions, Gdk::DragAction::COPY);
    if (copies)
        operations |= DragOperation::Copy;
    if (holds(actions, Gdk::DragAction::MOVE))
        operations |= DragOperation::Move;
    if (holds(actions, Gdk::DragAction::LINK))
        operations |= DragOperation::Link;
    if (copies && actions != Gdk::DragAction::COPY)
        operations |= DragOperation::Generic;
    return operations;
}

DraggingInfo FileDropTarget::drag() const
{
    DraggingInfo info;
    if (const auto* const value = gtk_drop_target_get_value(_target->gobj()))
        info.fileNames = pathsOf(*value);
    info.sourceOperations = operationsOf(_judged);
    return info;
}

Gdk::DragAction FileDropTarget::judge()
{
    auto* const delegate = _delegate();
    const auto drop = _target->get_current_drop();
    _judged = drop ? allowedActions(*drop) : Gdk::DragAction();
    const auto info = drag();
    const bool isTaken = delegate && delegate->validateDrop(info) != DragOperation::None;
    _answer = isTaken ? Gdk::DragAction::COPY : Gdk::DragAction();
    if (isTaken)
        tell({ DropHover::State::Taken, {} });
    else if (delegate)
        tell({ DropHover::State::Refused, delegate->whyRefused(info) });
    return _answer;
}

// Called when modifier keys may have changed the allowed actions.
Gdk::DragAction FileDropTarget::judgeAgain()
{
    const auto drop = _target->get_current_drop();
    return drop && allowedActions(*drop) != _judged ? judge() : _answer;
}

bool FileDropTarget::drop()
{
    tell({});
    auto* const delegate = _delegate();
    return delegate && delegate->prepareForDragOperation() && delegate->acceptDrop(drag());
}

void FileDropTarget::tell(DropHover hover)
{
    if (_hover == hover)
        return;
    _hover = std::move(hover);
    if (_hovers)
        _hovers(_hover);
}

}
