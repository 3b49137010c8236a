#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace pagora {

// The coroutine type of the page controllers. It starts at once and runs until its first wait. The destructor ends it
// at its current wait. An exception terminates the program. Main thread only.
template <typename T = void>
class [[nodiscard]] Task;

namespace detail {

struct TaskPromiseBase {
    std::coroutine_handle<> continuation = std::noop_coroutine();

    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> finished) const noexcept
        {
            return finished.promise().continuation;
        }
        void await_resume() const noexcept { }
    };

    std::suspend_never initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
    void unhandled_exception() const noexcept { std::terminate(); }
};

template <typename T>
struct TaskPromise : TaskPromiseBase {
    std::optional<T> value;
    Task<T> get_return_object();
    void return_value(T result) { value = std::move(result); }
    T take() { return std::move(*value); }
};

template <>
struct TaskPromise<void> : TaskPromiseBase {
    Task<void> get_return_object();
    void return_void() const { }
    void take() const { }
};

}

template <typename T>
class [[nodiscard]] Task {
public:
    using promise_type = detail::TaskPromise<T>;

    Task() = default;
    explicit Task(std::coroutine_handle<promise_type> coroutine)
        : _coroutine(coroutine)
    {
    }
    Task(Task&& other) noexcept
        : _coroutine(std::exchange(other._coroutine, nullptr))
    {
    }
    Task& operator=(Task&& other) noexcept
    {
        std::swap(_coroutine, other._coroutine);
        return *this;
    }
    ~Task()
    {
        if (_coroutine)
            _coroutine.destroy();
    }

    bool done() const { return !_coroutine || _coroutine.done(); }

    bool await_ready() const { return done(); }
    void await_suspend(std::coroutine_handle<> waiter) { _coroutine.promise().continuation = waiter; }
    T await_resume() { return _coroutine.promise().take(); }

private:
    std::coroutine_handle<promise_type> _coroutine;
};

template <typename T>
Task<T> detail::TaskPromise<T>::get_return_object()
{
    return Task<T>(std::coroutine_handle<TaskPromise<T>>::from_promise(*this));
}

inline Task<void> detail::TaskPromise<void>::get_return_object()
{
    return Task<void>(std::coroutine_handle<TaskPromise<void>>::from_promise(*this));
}

}
