#pragma once

#include <optional>
#include <utility>

namespace pagora {

// The value of an operation that succeeds without a value.
struct Done { };

// A value, or the reason for its absence.
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
    // Meaningful only if there is no value.
    const Reason& reason() const { return _reason; }

private:
    std::optional<Value> _value;
    Reason _reason {};
};

}
