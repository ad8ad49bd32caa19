#include "gui/paint_buffer.h"

PaintBuffer::PaintBuffer(HDC like, int widthPx, int heightPx)
    : m_widthPx(widthPx), m_heightPx(heightPx), m_context(CreateCompatibleDC(like)),
      m_bitmap(CreateCompatibleBitmap(like, widthPx, heightPx)), m_selected(m_context.Get(), m_bitmap.Get())
{
}

void PaintBuffer::CopyTo(HDC target) const
{
    BitBlt(target, 0, 0, m_widthPx, m_heightPx, Context(), 0, 0, SRCCOPY);
}
