// What lies behind the lyrics: the part of the player's own background that the strip covers, so that the strip looks
// see-through.
#pragma once

#include "common/gdi_handles.h"

// The strip in its parent's client area.
inline constexpr RECT kLyricsStripPlace = { 34, 45, 34 + 250, 45 + 70 };

class LyricsStripBackground {
public:
    // Reads the skin anew. Without its picture nothing is drawn.
    void Load();
    void Free();
    // To 0, 0 of `target`.
    void Draw(HDC target) const;

private:
    UniqueBitmap m_picture; // of the covered part only
};
