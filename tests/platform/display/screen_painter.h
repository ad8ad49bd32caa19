// Draws straight on a black screen, as a window without any other would.
#pragma once

#include "platform/ce.h"
#include "platform/linux/gdi/screen.h"
#include "platform/screen_size.h"

namespace cardsong::test {

class ScreenPainter {
public:
    ScreenPainter()
    {
        gdi::ClearScreen();
        const cairo_rectangle_int_t whole = { 0, 0, kScreenWidthPx, kScreenHeightPx };
        cairo_region_t* region = cairo_region_create_rectangle(&whole);
        m_dc = gdi::CreateScreenContext({ 0, 0 }, region);
        cairo_region_destroy(region);
    }
    ~ScreenPainter() { gdi::DestroyScreenContext(m_dc); }
    ScreenPainter(const ScreenPainter&) = delete;
    ScreenPainter& operator=(const ScreenPainter&) = delete;

    void Fill(RECT rect, COLORREF color)
    {
        const HBRUSH brush = CreateSolidBrush(color);
        FillRect(m_dc, &rect, brush);
        DeleteObject(brush);
    }

private:
    HDC m_dc;
};

} // namespace cardsong::test
