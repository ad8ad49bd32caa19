// Shaped pieces of text and their coverage, remembered while they are drawn again and again. Knows no context.
#pragma once

#include "platform/linux/gdi/font_face.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace cardsong::gdi {

struct TextRun {
    std::vector<int> extentsPx; // one per unit: width from the start through that unit; never falls
    int WidthPx() const { return extentsPx.empty() ? 0 : extentsPx.back(); }

    // Coverage of the glyphs, one byte a pixel, rows of `maskRowBytes`; filled in by RenderedRun.
    bool isRendered = false;
    int maskLeft = 0; // from the run's start
    int maskTop = 0;  // from the base line
    int maskWidth = 0;
    int maskHeight = 0;
    int maskRowBytes = 0;
    std::vector<std::uint8_t> mask;
};

// The first units of `text` that are shaped at a time; never splits a surrogate pair, never 0 unless `text` is empty.
std::size_t RunUnits(const FontFace& face, std::u16string_view text);
// `text`: at most RunUnits of it. The reference holds until the next call of either function.
const TextRun& MeasuredRun(const FontFace& face, std::u16string_view text);
const TextRun& RenderedRun(const FontFace& face, std::u16string_view text);

// Sums over all runs of a text of any length.
int TextWidth(const FontFace& face, std::u16string_view text);
// Cumulative width through each unit.
std::vector<int> TextExtents(const FontFace& face, std::u16string_view text);

} // namespace cardsong::gdi
