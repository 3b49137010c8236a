#include "confinement/MessageBudget.hpp"

namespace pagora {

namespace {

// So many a second.
constexpr double mostNotices = 100;
constexpr double mostNavigations = 200;
constexpr double mostResources = 5000;
constexpr double mostBytes = 1e6;
// So many for one document.
constexpr int mostResourcesOfAPage = 20000;
// What another message counts among them, so that a slow machine does not hide a flood.
constexpr int resourcesForAMessage = 10;

double mostOf(MessageBudget::Message message)
{
    switch (message) {
    case MessageBudget::Message::Notice:
        return mostNotices;
    case MessageBudget::Message::Navigation:
        return mostNavigations;
    default:
        return mostResources;
    }
}

int resourcesFor(MessageBudget::Message message)
{
    return message == MessageBudget::Message::Resource ? 1 : resourcesForAMessage;
}

}

bool MessageBudget::take(Message message, std::size_t bytes, double now)
{
    if (now - _second >= 1) {
        _second = now;
        _spent = 0;
    }
    _resources += resourcesFor(message);
    if (_resources > mostResourcesOfAPage)
        return false;
    _spent += 1 / mostOf(message) + static_cast<double>(bytes) / mostBytes;
    return _spent <= 1;
}

}
