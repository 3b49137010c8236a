#pragma once

#include <glib-object.h>

#include <utility>

namespace pagora {

// Owns one reference to a GObject of a C library that has no C++ wrapper here.
template <typename T>
class GObjectPtr {
public:
    GObjectPtr() = default;
    GObjectPtr(GObjectPtr&& other) noexcept
        : _object(std::exchange(other._object, nullptr))
    {
    }
    GObjectPtr& operator=(GObjectPtr&& other) noexcept
    {
        std::swap(_object, other._object);
        return *this;
    }
    ~GObjectPtr()
    {
        if (_object)
            g_object_unref(_object);
    }

    // Takes over the caller's reference, a floating one too.
    static GObjectPtr adopt(T* object)
    {
        GObjectPtr pointer;
        pointer._object = object;
        if (object && g_object_is_floating(object))
            g_object_ref_sink(object);
        return pointer;
    }
    // Adds a reference.
    static GObjectPtr share(T* object)
    {
        GObjectPtr pointer;
        pointer._object = object ? static_cast<T*>(g_object_ref(object)) : nullptr;
        return pointer;
    }

    T* get() const { return _object; }
    explicit operator bool() const { return _object; }

private:
    T* _object = nullptr;
};

}
