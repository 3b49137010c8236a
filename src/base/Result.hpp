#pragma once

#include <optional>
#include <utility>

namespace pagora {

// What an operation without a value returns when it succeeds.
struct Done { };

// A value, or the reason why there is none.
template <typename Value, typename Reason>
class Result {
public:
    Result(Value value)
        : _value(std::move(value))
    {
    }
    Result(Reason reason)
        : _reason(std::move(reason))
    {
    }

    explicit operator bool() const { return _value.has_value(); }
    Value& operator*() { return *_value; }
    const Value& operator*() const { return *_value; }
    Value* operator->() { return &*_value; }
    const Value* operator->() const { return &*_value; }
    // Where there is no value.
    const Reason& reason() const { return _reason; }

private:
    std::optional<Value> _value;
    Reason _reason {};
};

}
