// An off-screen picture in a context of its own: a window is composed in it and then copied to the screen at once, so
// that nobody sees a half-drawn one. Knows no window.
#pragma once

#include "common/gdi_handles.h"

class PaintBuffer {
public:
    // Of the format of `like`, with undefined pixels.
    PaintBuffer(HDC like, int widthPx, int heightPx);

    // Borrowed; it lives as long as the buffer.
    [[nodiscard]] HDC Context() const { return m_context.Get(); }
    // Copies the whole buffer with its left top corner to (0, 0).
    void CopyTo(HDC target) const;

private:
    int m_widthPx;
    int m_heightPx;
    UniqueMemoryContext m_context;
    UniqueBitmap m_bitmap;
    SelectedObject m_selected; // goes first: a bitmap is freed only when no context holds it
};
