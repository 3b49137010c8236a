#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace pagora {

// A result that arrives later, once, on the main thread. A coroutine waits for it with `co_await`. Destroying a reply
// abandons the waiting coroutine, so closing a window ends its pending work. Main thread only.
template <typename T>
class Reply {
    struct Nothing { };
    using Stored = std::conditional_t<std::is_void_v<T>, Nothing, T>;

    struct State {
        std::optional<Stored> value;
        std::coroutine_handle<> waiter;
    };

public:
    // Answers the reply. Later answers are ignored, as are answers to a destroyed reply.
    class Resolver {
    public:
        void operator()(Stored value = {}) const
        {
            if (_state->value)
                return;
            _state->value = std::move(value);
            if (auto waiter = std::exchange(_state->waiter, nullptr))
                waiter.resume();
        }

    private:
        friend class Reply;
        explicit Resolver(std::shared_ptr<State> state)
            : _state(std::move(state))
        {
        }
        std::shared_ptr<State> _state;
    };

    Reply()
        : _state(std::make_shared<State>())
    {
    }
    Reply(Reply&&) noexcept = default;
    Reply& operator=(Reply&&) noexcept = default;
    ~Reply()
    {
        if (_state)
            _state->waiter = nullptr;
    }

    // Returns a reply that is already answered.
    static Reply of(Stored value = {})
    {
        Reply reply;
        reply._state->value = std::move(value);
        return reply;
    }

    Resolver resolver() const { return Resolver(_state); }

    bool await_ready() const { return _state->value.has_value(); }
    void await_suspend(std::coroutine_handle<> waiter) { _state->waiter = waiter; }
    T await_resume()
    {
        if constexpr (!std::is_void_v<T>)
            return std::move(*_state->value);
    }

private:
    std::shared_ptr<State> _state;
};

}
