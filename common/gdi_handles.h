// Drawing objects that own themselves: each is released exactly once, and a context gets its object back. Knows no
// window.
#pragma once

#include "platform/ce.h"

#include <utility>

struct GdiObjectTraits {
    static void Close(HGDIOBJ object) { DeleteObject(object); }
};
struct MemoryContextTraits {
    static void Close(HDC context) { DeleteDC(context); }
};

template <typename Handle, typename Traits>
class UniqueHandle {
public:
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
    explicit operator bool() const { return m_handle != nullptr; }
    [[nodiscard]] Handle Release() { return std::exchange(m_handle, nullptr); }
    void Reset(Handle handle = nullptr)
    {
        const Handle old = std::exchange(m_handle, handle);
        if (old != nullptr)
            Traits::Close(old);
    }

private:
    Handle m_handle = nullptr;
};

template <typename Handle>
using UniqueGdiObject = UniqueHandle<Handle, GdiObjectTraits>;
using UniqueBitmap = UniqueGdiObject<HBITMAP>;
using UniqueFont = UniqueGdiObject<HFONT>;
using UniqueBrush = UniqueGdiObject<HBRUSH>;
using UniqueMemoryContext = UniqueHandle<HDC, MemoryContextTraits>;

// Selects an object for as long as the guard lives, and puts the one before back.
class SelectedObject {
public:
    SelectedObject(HDC context, HGDIOBJ object) : m_context(context), m_before(SelectObject(context, object)) {}
    ~SelectedObject() { SelectObject(m_context, m_before); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC m_context;
    HGDIOBJ m_before;
};
