#include "gui/skin_image.h"

#include <utility>

SkinImage::SkinImage(HBITMAP bitmap) : m_bitmap(bitmap)
{
    BITMAP description = {};
    if (bitmap == nullptr || GetObjectW(bitmap, sizeof(description), &description) == 0)
        return;
    m_widthPx = description.bmWidth;
    m_heightPx = description.bmHeight;
}

SkinImage& SkinImage::operator=(SkinImage&& other) noexcept
{
    m_context = std::move(other.m_context); // first, while the old bitmap is still there to be let go of
    m_bitmap = std::move(other.m_bitmap);
    m_widthPx = std::exchange(other.m_widthPx, 0);
    m_heightPx = std::exchange(other.m_heightPx, 0);
    return *this;
}

HDC SkinImage::Context(HDC like)
{
    if (m_bitmap && !m_context) {
        m_context.Reset(CreateCompatibleDC(like));
        SelectObject(m_context.Get(), m_bitmap.Get()); // for good: the context goes before the bitmap
    }
    return m_context.Get();
}

void SkinImage::DrawKeyed(HDC target, int x, int y, COLORREF key)
{
    if (m_bitmap)
        TransparentImage(target, x, y, m_widthPx, m_heightPx, Context(target), 0, 0, m_widthPx, m_heightPx, key);
}
