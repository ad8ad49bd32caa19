#include "platform/linux/display/sdl_window.h"

#include "platform/host/viewport_rows.h"

#include <algorithm>
#include <cstring>

namespace cardsong::display {

using namespace host;
namespace {

constexpr SDL_Rect kCommonDesktop = { 0, 0, 1024, 768 }; // where the library cannot say

SDL_Rect DesktopArea()
{
    SDL_Rect area{};
    return SDL_GetDisplayUsableBounds(0, &area) == 0 ? area : kCommonDesktop;
}

// Made as large as the desktop from the start: without a window manager nobody enlarges it afterwards.
SDL_Window* CreateFullScreen()
{
    SDL_DisplayMode desktop{};
    if (SDL_GetDesktopDisplayMode(0, &desktop) != 0)
        return nullptr;
    return SDL_CreateWindow("Cardsong", 0, 0, desktop.w, desktop.h, SDL_WINDOW_FULLSCREEN_DESKTOP);
}

void WriteRowAs(const SDL_PixelFormat& format, std::span<const std::uint16_t> row, std::byte* target)
{
    if (format.BytesPerPixel == 4) {
        WidenRow(row, { format.Rshift, format.Gshift, format.Bshift },
                 { reinterpret_cast<std::uint32_t*>(target), row.size() });
    } else if (format.format == SDL_PIXELFORMAT_RGB565) {
        std::memcpy(target, row.data(), row.size_bytes());
    } else {
        const int width = static_cast<int>(row.size());
        SDL_ConvertPixels(width, 1, SDL_PIXELFORMAT_RGB565, row.data(), width * 2, format.format, target,
                          width * format.BytesPerPixel);
    }
}

} // namespace

std::string SdlWindow::Open(const DisplayOptions& options)
{
    m_turn = options.turn;
    m_window.reset(options.fullScreen ? CreateFullScreen() : CreateInWindow(options.scale));
    if (!m_window || SDL_GetWindowSurface(m_window.get()) == nullptr)
        return SDL_GetError();
    Redraw();
    return {};
}

// It keeps its turn, whatever its size becomes.
SDL_Window* SdlWindow::CreateInWindow(int scale)
{
    const SDL_Rect desktop = DesktopArea();
    m_turn = m_turn.value_or(TurnThatFits(desktop.w, desktop.h));
    const SIZE picture = TurnedSize(*m_turn);
    const SIZE size =
        scale > 0 ? SIZE{ picture.cx * scale, picture.cy * scale } : ComfortableSize(desktop.w, desktop.h, *m_turn);
    SDL_Window* const window =
        SDL_CreateWindow("Cardsong", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, static_cast<int>(size.cx),
                         static_cast<int>(size.cy), SDL_WINDOW_RESIZABLE);
    if (window != nullptr)
        SDL_SetWindowMinimumSize(window, static_cast<int>(std::min(size.cx, picture.cx)),
                                 static_cast<int>(std::min(size.cy, picture.cy)));
    return window;
}

void SdlWindow::Raise()
{
    if ((SDL_GetWindowFlags(m_window.get()) & SDL_WINDOW_MINIMIZED) != 0)
        SDL_RestoreWindow(m_window.get());
    SDL_RaiseWindow(m_window.get());
}

SDL_Point SdlWindow::Size() const
{
    SDL_Point size{};
    SDL_GetWindowSize(m_window.get(), &size.x, &size.y);
    return size;
}

void SdlWindow::Show(Frame& frame)
{
    const auto changed = FindChangedRows(m_shown, frame);
    if (changed.empty())
        return;
    std::swap(m_shown, frame);
    if (SDL_Surface* surface = SDL_GetWindowSurface(m_window.get()))
        SendRows(*surface, changed);
}

void SdlWindow::Redraw()
{
    SDL_Surface* surface = SDL_GetWindowSurface(m_window.get());
    if (surface == nullptr)
        return;
    m_viewport = FitViewport(surface->w, surface->h, m_turn.value_or(TurnThatFits(surface->w, surface->h)));
    SDL_FillRect(surface, nullptr, SDL_MapRGB(surface->format, 0, 0, 0));
    DrawRows(*surface, { 0, kFrameHeightPx });
    SDL_UpdateWindowSurface(m_window.get());
}

void SdlWindow::SendRows(SDL_Surface& surface, const std::vector<RowRange>& ranges)
{
    std::vector<SDL_Rect> rects;
    for (const RowRange& rows : ranges)
        rects.push_back(DrawRows(surface, rows));
    SDL_UpdateWindowSurfaceRects(m_window.get(), rects.data(), static_cast<int>(rects.size()));
}

SDL_Rect SdlWindow::DrawRows(SDL_Surface& surface, const RowRange& rows) const
{
    RECT part = ToSurface(m_viewport, { 0, rows.first, kFrameWidthPx, rows.end });
    part.right = std::min<LONG>(part.right, surface.w);
    part.bottom = std::min<LONG>(part.bottom, surface.h);
    if (SDL_LockSurface(&surface) == 0) {
        const SDL_PixelFormat& format = *surface.format;
        DrawPart(m_shown, m_viewport, part,
                 { static_cast<std::byte*>(surface.pixels), surface.pitch, format.BytesPerPixel },
                 [&format](std::span<const std::uint16_t> row, std::byte* target) { WriteRowAs(format, row, target); });
        SDL_UnlockSurface(&surface);
    }
    return { static_cast<int>(part.left), static_cast<int>(part.top), static_cast<int>(part.right - part.left),
             static_cast<int>(part.bottom - part.top) };
}

} // namespace cardsong::display
