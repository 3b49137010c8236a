#pragma once

#include <mutex>
#include <utility>

namespace pagora {

// Data with the lock that protects it: only the holder of the lock reaches the data. Any thread.
template <typename T>
class Guarded {
public:
    template <typename... Arguments>
    explicit Guarded(Arguments&&... arguments)
        : _data(std::forward<Arguments>(arguments)...)
    {
    }

    // Holds the lock for as long as it lives.
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
