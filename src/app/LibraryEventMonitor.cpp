#include "app/LibraryEventMonitor.hpp"

namespace pagora {

LibraryEventMonitor::LibraryEventMonitor(LibraryWindow& window, LibraryViews& views, std::function<void()> removeBooks)
    : _window(window)
    , _views(views)
    , _removeBooks(std::move(removeBooks))
{
}

LibraryEventMonitor::~LibraryEventMonitor()
{
    remove();
}

void LibraryEventMonitor::install()
{
    _window.setEventMonitor([this](const LibraryEvent& event) { return handle(event); });
    _installed = true;
}

void LibraryEventMonitor::remove()
{
    if (_installed)
        _window.setEventMonitor(nullptr);
    _installed = false;
}

bool LibraryEventMonitor::handle(const LibraryEvent& event)
{
    _observesFullScreen = true;
    if (event.kind == LibraryEvent::Kind::LeftMouseDown) {
        auto* list = _views.tableController();
        if (list && _views.activeViewController() == list)
            list->bookTable().setMultiSelection(event.command);
        return false;
    }
    if (!event.command)
        return false;
    if (event.keyCode == LibraryEvent::keyDelete) {
        _removeBooks();
        return true;
    }
    if (event.keyCode == LibraryEvent::keyA) {
        _views.selectAll();
        return true;
    }
    return false;
}

}
