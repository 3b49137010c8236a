#pragma once

#include <mutex>
#include <utility>

namespace pagora {

// Data with the mutex that protects it. The data is accessible only while the lock is held. Thread-safe.
template <typename T>
class Guarded {
public:
    template <typename... Arguments>
    explicit Guarded(Arguments&&... arguments)
        : _data(std::forward<Arguments>(arguments)...)
    {
    }

    // Holds the lock during its lifetime.
    class Access {
    public:
        T* operator->() const { return &_data; }
        T& operator*() const { return _data; }

    private:
        friend class Guarded;
        Access(std::mutex& mutex, T& data)
            : _lock(mutex)
            , _data(data)
        {
        }
        std::unique_lock<std::mutex> _lock;
        T& _data;
    };
    Access lock() { return Access(_mutex, _data); }

private:
    std::mutex _mutex;
    T _data;
};

}
