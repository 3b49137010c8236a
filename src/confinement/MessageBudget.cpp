#include "confinement/MessageBudget.hpp"

namespace pagora {

namespace {

// Per second.
constexpr double maxNotices = 100;
constexpr double maxNavigations = 200;
constexpr double maxResources = 5000;
constexpr double maxBytes = 1e6;
// Per document.
constexpr int maxResourcesOfPage = 20000;
// The number of resources that another message is charged as, so that a slow machine does not hide a flood.
constexpr int resourcesForAMessage = 10;

double limitOf(MessageBudget::Message message)
{
    switch (message) {
    case MessageBudget::Message::Notice:
        return maxNotices;
    case MessageBudget::Message::Navigation:
        return maxNavigations;
    default:
        return maxResources;
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
    if (_resources > maxResourcesOfPage)
        return false;
    _spent += 1 / limitOf(message) + static_cast<double>(bytes) / maxBytes;
    return _spent <= 1;
}

}
