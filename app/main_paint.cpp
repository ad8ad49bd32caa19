#include "app/main_paint.h"

#include "app/player_controls.h"
#include "app/player_state.h"
#include "app/title_ticker.h"
#include "common/gdi_handles.h"
#include "common/rect.h"
#include "gui/gif_bitmap.h"
#include "gui/paint_buffer.h"
#include "gui/soft_key_layout.h"
#include "gui/text_line.h"
#include "platform/screen_size.h"

#include <array>
#include <memory>
#include <optional>

namespace {

constexpr RECT kWholeScreen{ 0, 0, kScreenWidthPx, kScreenHeightPx };
constexpr RECT kSoftKeyRect{ 0, kSoftKeyTopPx, kScreenWidthPx, kSoftKeyTopPx + kSoftKeyHeightPx };
constexpr RECT kTotalTimeRect{ 33, 117, 113, 137 };
constexpr RECT kElapsedTimeRect{ 221, 117, 300, 137 };
// The part of the text layer that reaches the screen: it cuts the title off at the panel's edges.
constexpr RECT kPanel{ 34, 45, 34 + 250, 45 + 92 };
constexpr COLORREF kTextColor = RGB(0xFF, 0xFF, 0xFF);
constexpr int kTimePoints = 12;
constexpr int kTitlePoints = 18;

// All that the ground shows besides the background and the soft keys.
struct Shown {
    bool hasSong;
    WString total;
    WString elapsed;
    WString title;
    std::array<LONG, 8> strips;

    bool operator==(const Shown&) const = default;
};

Shown WhatToShow()
{
    const RECT &a = g_titleStripA.rect, &b = g_titleStripB.rect;
    return { IsSongLoaded(),
             g_totalText,
             g_elapsedText,
             g_titleText,
             { a.left, a.top, a.right, a.bottom, b.left, b.top, b.right, b.bottom } };
}

// What one paint after the other needs again. Made at the first paint, freed with the window.
struct Painting {
    explicit Painting(HDC like)
        : ground(like, kScreenWidthPx, kScreenHeightPx), text(like, kScreenWidthPx, kScreenHeightPx)
    {
    }
    PaintBuffer ground;         // what goes to the screen
    PaintBuffer text;           // of which only the panel goes to the ground
    std::optional<Shown> shown; // by the ground, but for the soft keys' last look
};

UniqueBitmap g_background;
UniqueBrush g_backgroundBrush;
UniqueFont g_timeFont;
UniqueFont g_titleFont;
std::unique_ptr<Painting> g_painting;

void DrawTimes(HDC context)
{
    const SelectedObject font(context, g_timeFont.Get());
    RECT total = kTotalTimeRect;
    DrawTextW(context, g_totalText.c_str(), -1, &total, DT_SINGLELINE | DT_CENTER);
    RECT elapsed = kElapsedTimeRect;
    DrawTextW(context, g_elapsedText.c_str(), -1, &elapsed, DT_SINGLELINE | DT_BOTTOM | DT_CENTER);
}

void DrawTitle(HDC context)
{
    const SelectedObject font(context, TitleFont());
    for (const TitleStrip* strip : { &g_titleStripA, &g_titleStripB }) {
        RECT rect = strip->rect;
        DrawTextW(context, g_titleText.c_str(), -1, &rect, DT_SINGLELINE | DT_NOPREFIX);
    }
}

void DrawTextLayer(HDC context)
{
    FillRect(context, &kPanel, g_backgroundBrush.Get()); // no more of this layer is ever seen
    if (!IsSongLoaded())
        return;
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, kTextColor);
    DrawTimes(context);
    DrawTitle(context);
}

// A player that stands still paints at every tick of its timers; only what changed is drawn.
void DrawGround(HDC ground)
{
    Shown shown = WhatToShow();
    if (g_painting->shown == shown) {
        FillRect(ground, &kSoftKeyRect, g_backgroundBrush.Get());
        return;
    }
    g_painting->shown = std::move(shown);
    FillRect(ground, &kWholeScreen, g_backgroundBrush.Get());
    DrawTextLayer(g_painting->text.Context());
    BitBlt(ground, kPanel.left, kPanel.top, WidthOf(kPanel), HeightOf(kPanel), g_painting->text.Context(), kPanel.left,
           kPanel.top, SRCCOPY);
}

void PreparePainting(HDC context)
{
    if (!g_painting)
        g_painting = std::make_unique<Painting>(context);
    if (!g_timeFont)
        g_timeFont = CreatePlainFont(context, kTimePoints);
}

} // namespace

void LoadBackground()
{
    g_background.Reset(LoadGifBitmap(TEXT("\\Windows\\gui_musicplayer_background.gif")));
    g_backgroundBrush.Reset(g_background ? CreatePatternBrush(g_background.Get()) : CreateSolidBrush(RGB(0, 0, 0)));
}

void FreeBackground()
{
    g_painting.reset();
    g_background.Reset();
    g_backgroundBrush.Reset();
    g_timeFont.Reset();
    g_titleFont.Reset();
}

void PaintMainWindow(HWND window)
{
    PAINTSTRUCT paint;
    const HDC screen = BeginPaint(window, &paint);
    PreparePainting(screen);
    const HDC ground = g_painting->ground.Context();
    DrawGround(ground);
    g_controls.softKeys.DrawAll(ground);
    g_painting->ground.CopyTo(screen);
    EndPaint(window, &paint);
}

void EraseMainWindow(HDC context)
{
    if (!g_background)
        return;
    const UniqueMemoryContext source(CreateCompatibleDC(context));
    const SelectedObject picture(source.Get(), g_background.Get());
    BitBlt(context, 0, 0, kScreenWidthPx, kScreenHeightPx, source.Get(), 0, 0, SRCCOPY);
}

HFONT TitleFont()
{
    if (!g_titleFont) {
        const HDC screen = GetDC(nullptr);
        g_titleFont = CreatePlainFont(screen, kTitlePoints);
        ReleaseDC(nullptr, screen);
    }
    return g_titleFont.Get();
}
