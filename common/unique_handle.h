// A handle of the system that closes itself exactly once. What kind of handle, its traits say.
#pragma once

#include "platform/ce.h"

#include <utility>

// `Traits` name the type `Handle`, the value None() that no open handle has, and Close(Handle).
template <typename Traits>
class UniqueHandle {
public:
    using Handle = typename Traits::Handle;

    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept
    {
        Reset(other.Release());
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    Handle Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != Traits::None(); }
    [[nodiscard]] Handle Release() { return std::exchange(m_handle, Traits::None()); }
    void Reset(Handle handle = Traits::None())
    {
        const Handle old = std::exchange(m_handle, handle);
        if (old != Traits::None())
            Traits::Close(old);
    }

private:
    Handle m_handle = Traits::None();
};

// The two ways in which the system says that there is no handle.
template <typename HandleType>
struct NullWhenNone {
    using Handle = HandleType;
    static Handle None() { return nullptr; }
};
struct InvalidWhenNone {
    using Handle = HANDLE;
    static Handle None() { return INVALID_HANDLE_VALUE; }
};
