// A skin picture ready for drawing: its bitmap, its size, and a memory context that holds it. Knows no window.
#pragma once

#include "common/gdi_handles.h"

class SkinImage {
public:
    SkinImage() = default; // no picture: draws nothing
    // Takes the bitmap over; null makes no picture.
    explicit SkinImage(HBITMAP bitmap);
    SkinImage(SkinImage&&) noexcept = default;
    SkinImage& operator=(SkinImage&& other) noexcept;

    explicit operator bool() const { return static_cast<bool>(m_bitmap); }
    int WidthPx() const { return m_widthPx; }
    int HeightPx() const { return m_heightPx; }

    // A context with the picture selected, made at the first call and kept; borrowed. `like`: what it will be drawn on.
    HDC Context(HDC like);
    // Draws the picture at its own size with its left top corner at (x, y); pixels of `key` are left out.
    void DrawKeyed(HDC target, int x, int y, COLORREF key);

private:
    UniqueBitmap m_bitmap;
    UniqueMemoryContext m_context; // goes first: a bitmap is freed only when no context holds it
    int m_widthPx = 0;
    int m_heightPx = 0;
};
