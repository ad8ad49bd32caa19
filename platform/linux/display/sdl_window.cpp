#include "platform/linux/display/sdl_window.h"

#include <SDL_hints.h>

#include <algorithm>
#include <cstring>

namespace cardsong::display {

using namespace host;
namespace {

int WindowScale(const DisplayOptions& options)
{
    if (options.scale > 0)
        return options.scale;
    SDL_Rect desktop{};
    return SDL_GetDisplayUsableBounds(0, &desktop) == 0 ? ComfortableScale(desktop.w, desktop.h) : 2;
}

SDL_Window* CreateInWindow(int scale)
{
    return SDL_CreateWindow("Cardsong", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, kFrameWidthPx * scale,
                            kFrameHeightPx * scale, SDL_WINDOW_RESIZABLE);
}

// Made as large as the desktop from the start: without a window manager nobody enlarges it afterwards.
SDL_Window* CreateFullScreen()
{
    SDL_DisplayMode desktop{};
    if (SDL_GetDesktopDisplayMode(0, &desktop) != 0)
        return nullptr;
    return SDL_CreateWindow("Cardsong", 0, 0, desktop.w, desktop.h, SDL_WINDOW_FULLSCREEN_DESKTOP);
}

// Part of one enlarged row that lies on the surface, and the frame's pixels under it.
struct Columns {
    int firstPixel;
    int count;
    int left;
};

Columns ColumnsOn(const SDL_Surface& surface, const Viewport& viewport)
{
    const int hidden = viewport.left < 0 ? (-viewport.left + viewport.scale - 1) / viewport.scale : 0;
    const int left = viewport.left + hidden * viewport.scale;
    const int count = std::min(kFrameWidthPx - hidden, (surface.w - left) / viewport.scale);
    return { hidden, std::max(0, count), left };
}

void DrawRow(std::span<const std::uint16_t> row, int scale, const SDL_PixelFormat& format, void* out)
{
    const std::size_t words = row.size() * static_cast<std::size_t>(scale);
    if (format.BytesPerPixel == 4) {
        EnlargeRow(row, scale, { format.Rshift, format.Gshift, format.Bshift },
                   { static_cast<std::uint32_t*>(out), words });
    } else if (format.format == SDL_PIXELFORMAT_RGB565) {
        EnlargeRow(row, scale, { static_cast<std::uint16_t*>(out), words });
    } else {
        std::vector<std::uint16_t> enlarged(words);
        EnlargeRow(row, scale, enlarged);
        const int width = static_cast<int>(words);
        SDL_ConvertPixels(width, 1, SDL_PIXELFORMAT_RGB565, enlarged.data(), width * 2, format.format, out,
                          width * format.BytesPerPixel);
    }
}

} // namespace

std::string SdlWindow::Open(const DisplayOptions& options)
{
    m_window.reset(options.fullScreen ? CreateFullScreen() : CreateInWindow(WindowScale(options)));
    if (!m_window || SDL_GetWindowSurface(m_window.get()) == nullptr)
        return SDL_GetError();
    SDL_SetWindowMinimumSize(m_window.get(), kFrameWidthPx, kFrameHeightPx);
    Redraw();
    return {};
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
    m_viewport = FitViewport(surface->w, surface->h);
    SDL_FillRect(surface, nullptr, SDL_MapRGB(surface->format, 0, 0, 0));
    DrawRows(*surface, { 0, kFrameHeightPx });
    SDL_UpdateWindowSurface(m_window.get());
}

void SdlWindow::SendRows(SDL_Surface& surface, const std::vector<RowRange>& ranges)
{
    std::vector<SDL_Rect> rects;
    for (const RowRange& rows : ranges) {
        DrawRows(surface, rows);
        const SDL_Rect rect = { m_viewport.left, m_viewport.top + rows.first * m_viewport.scale,
                                kFrameWidthPx * m_viewport.scale, (rows.end - rows.first) * m_viewport.scale };
        const SDL_Rect whole = { 0, 0, surface.w, surface.h };
        SDL_Rect visible;
        if (SDL_IntersectRect(&rect, &whole, &visible))
            rects.push_back(visible);
    }
    if (!rects.empty())
        SDL_UpdateWindowSurfaceRects(m_window.get(), rects.data(), static_cast<int>(rects.size()));
}

// Each row is enlarged sideways once and then copied downwards.
void SdlWindow::DrawRows(SDL_Surface& surface, const RowRange& rows) const
{
    const SDL_PixelFormat& format = *surface.format;
    const int scale = m_viewport.scale;
    const Columns columns = ColumnsOn(surface, m_viewport);
    if (columns.count == 0 || SDL_LockSurface(&surface) != 0)
        return;
    const auto bytes = static_cast<std::size_t>(columns.count * scale * format.BytesPerPixel);
    auto* pixels = static_cast<std::uint8_t*>(surface.pixels) + columns.left * format.BytesPerPixel;
    for (int y = rows.first; y < rows.end; ++y) {
        const std::uint16_t* row = m_shown.data() + static_cast<std::ptrdiff_t>(y) * kFrameWidthPx + columns.firstPixel;
        const std::uint8_t* drawn = nullptr;
        for (int repeat = 0; repeat < scale; ++repeat) {
            const int line = m_viewport.top + y * scale + repeat;
            if (line < 0 || line >= surface.h)
                continue;
            std::uint8_t* out = pixels + static_cast<std::ptrdiff_t>(line) * surface.pitch;
            if (drawn != nullptr)
                std::memcpy(out, drawn, bytes);
            else
                DrawRow({ row, static_cast<std::size_t>(columns.count) }, scale, format, out);
            drawn = out;
        }
    }
    SDL_UnlockSurface(&surface);
}

} // namespace cardsong::display
