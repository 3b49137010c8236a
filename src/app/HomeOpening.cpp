#include "app/HomeOpening.hpp"

#include "catalogue/Settings.hpp"

namespace pagora {

HomeOpening::HomeOpening(const std::string& folder)
    : _folder(folder)
    , _lock(folder)
{
    if (_lock.take(0))
        begin();
}

HomeOpening::~HomeOpening() = default;

bool HomeOpening::take(double seconds)
{
    if (_worker)
        return true;
    if (!_lock.take(seconds))
        return false;
    begin();
    return true;
}

void HomeOpening::begin()
{
    _worker.emplace();
    _worker->perform([this] {
        _defaults = std::make_unique<UserDefaults>(_folder);
        const auto stored = _defaults->objectForKey(defaults_keys::BookData);
        _whenOpen.set_value();
        if (stored && stored->array())
            _records->make(*stored->array());
    });
}

UserDefaults& HomeOpening::defaults()
{
    _open.wait();
    return *_defaults;
}

}
