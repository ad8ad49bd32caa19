// Where the lines of a message begin and end. Knows no font and no window: it is told how wide a text is.
#pragma once

#include "platform/ce.h"

#include <cstddef>
#include <functional>
#include <vector>

constexpr std::size_t kMostMessageLines = 6;

// A part of the message, in units. An empty line has no length.
struct MessageLine {
    std::size_t start;
    std::size_t length;
    bool operator==(const MessageLine&) const = default;
};

// The width in pixels of a part of the message, which does not shrink when the part grows.
using TextWidth = std::function<int(WStringView)>;

// At most six lines that are no wider than `roomPx` each; what follows the last one is left out. A line breaks after a
// word and before an ideograph; what separates words (every unit below 33) ends the line that it follows and begins
// none. CR or LF ends its line, and each LF that follows directly makes an empty one: CR LF gives two ends, a lone LF
// one. A word that is wider than the room goes on in the next line. A character that is wider stands alone.
// Characters that take no room could make a line endless: a line has at most as many units as its room has pixels.
std::vector<MessageLine> WrapMessage(WStringView text, int roomPx, const TextWidth& widthOf);
