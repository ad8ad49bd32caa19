#include "lyrics/lyrics_strip_background.h"

#include "gui/gif_bitmap.h"

namespace {

constexpr const WCHAR* kPlayerBackground = TEXT("\\Windows\\gui_musicplayer_background.gif");
constexpr int kWidthPx = 284;
constexpr int kHeightPx = 80;

void Copy(HDC target, HBITMAP picture, int left, int top)
{
    const UniqueMemoryContext source(CreateCompatibleDC(target));
    const SelectedObject selected(source.Get(), picture);
    BitBlt(target, 0, 0, kWidthPx, kHeightPx, source.Get(), left, top, SRCCOPY);
}

} // namespace

void LyricsStripBackground::Load()
{
    Free();
    const UniqueBitmap whole(LoadGifBitmap(kPlayerBackground));
    if (!whole)
        return;
    const HDC screen = GetDC(nullptr);
    const UniqueMemoryContext target(CreateCompatibleDC(screen));
    m_picture.Reset(CreateCompatibleBitmap(screen, kWidthPx, kHeightPx));
    ReleaseDC(nullptr, screen);
    const SelectedObject selected(target.Get(), m_picture.Get());
    Copy(target.Get(), whole.Get(), kLyricsStripPlace.left, kLyricsStripPlace.top);
}

void LyricsStripBackground::Free()
{
    m_picture.Reset();
}

void LyricsStripBackground::Draw(HDC target) const
{
    if (m_picture)
        Copy(target, m_picture.Get(), 0, 0);
}
