// Cuts a text into the lines that DrawTextW shows: prefixes, line breaks, word breaks, ellipses. Draws nothing.
#pragma once

#include "platform/linux/gdi/text_run.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cardsong::gdi {

// What is shown of a text whose "&" are marks: the text without them, and the character to underline.
struct PrefixedText {
    std::u16string text;
    std::optional<std::size_t> underlined;
};
PrefixedText ResolvePrefixes(std::u16string_view text);

// A line is a part of the text it was cut from.
struct TextLine {
    std::size_t start = 0;
    std::size_t units = 0;
};
struct LineRoom {
    int widthPx = 0;
    bool keepsBlanks = false; // a line that ends between words keeps the blanks there that fit
};
// Cuts at CR, LF and both in a row; with `room` also between words, so that a line fits if its first word does.
std::vector<TextLine> CutLines(const FontFace& face, std::u16string_view text, std::optional<LineRoom> room);

// `line` as it stands if it fits `widthPx`, else as much of its beginning as does with "..." after it, or "..." alone.
std::u16string ShortenLine(const FontFace& face, std::u16string_view line, int widthPx);

} // namespace cardsong::gdi
