// The picture of the strip: white text on the player's background. It is drawn off the screen and kept, so that a strip
// that stands still needs no drawing. It knows no lyrics and no time.
#pragma once

#include "gui/paint_buffer.h"
#include "lyrics/lyrics_strip_background.h"

#include <optional>
#include <span>

// More of a text is neither measured nor drawn: a strip is as wide as twenty letters, and a card may hold anything.
inline constexpr std::size_t kMostShownUnits = 1000;
// `text` cut to that, never within a character.
WStringView ShownPart(WStringView text);

struct PlacedText {
    WStringView text;
    RECT rect; // in the strip
};

class LyricsFrame {
public:
    // `area`: the part of the strip that is drawn; its size is the picture's. Colours and depth are those of `like`.
    // Nothing is drawn into an empty area.
    void Draw(HDC like, const RECT& area, const LyricsStripBackground& background, HFONT font,
              const std::optional<PlacedText>& centred, std::span<const PlacedText> others);
    // Copies the picture to 0, 0; nothing without one.
    void CopyTo(HDC target) const;
    // Forgets the picture.
    void Clear();

    bool IsDrawn() const { return m_isDrawn; }

private:
    std::optional<PaintBuffer> m_picture;
    SIZE m_size = {};
    bool m_isDrawn = false;
};
