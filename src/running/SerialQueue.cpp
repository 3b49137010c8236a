#include "running/SerialQueue.hpp"

#include <utility>

namespace pagora {

void SerialQueue::enqueueReport(Work work)
{
    _reports.push_back(std::move(work));
    start();
}

void SerialQueue::enqueueAction(Work work)
{
    _actions.push_back(std::move(work));
    start();
}

void SerialQueue::holdActions()
{
    _held = true;
}

void SerialQueue::releaseActions()
{
    _held = false;
    start();
}

void SerialQueue::dropCurrent()
{
    _drain = {};
    _current = nullptr;
    _running = false;
    start();
}

void SerialQueue::start()
{
    if (_running || (_reports.empty() && (_held || _actions.empty())))
        return;
    _running = true;
    _drain = drain();
}

bool SerialQueue::takeNext()
{
    auto& lane = _reports.empty() ? _actions : _reports;
    if (lane.empty() || (&lane == &_actions && _held))
        return false;
    _current = std::move(lane.front());
    lane.pop_front();
    return true;
}

Task<void> SerialQueue::drain()
{
    do {
        while (takeNext())
            co_await _current();
        if (_whenDrained)
            co_await _whenDrained();
    } while (!_reports.empty() || (!_held && !_actions.empty()));
    _current = nullptr;
    _running = false;
}

}
