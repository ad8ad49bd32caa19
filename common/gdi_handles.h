// Drawing objects that own themselves: each is released exactly once, and a context gets its object back. Knows no
// window.
#pragma once

#include "common/unique_handle.h"

template <typename HandleType>
struct GdiObjectTraits : NullWhenNone<HandleType> {
    static void Close(HandleType object) { DeleteObject(object); }
};
struct MemoryContextTraits : NullWhenNone<HDC> {
    static void Close(HDC context) { DeleteDC(context); }
};

using UniqueBitmap = UniqueHandle<GdiObjectTraits<HBITMAP>>;
using UniqueFont = UniqueHandle<GdiObjectTraits<HFONT>>;
using UniqueBrush = UniqueHandle<GdiObjectTraits<HBRUSH>>;
using UniqueMemoryContext = UniqueHandle<MemoryContextTraits>;

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
