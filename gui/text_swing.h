// The way of a text that is too long for its box: its visible start moves a character a step, to where the rest fits,
// and back again. Knows no window and no font.
#pragma once

#include "platform/ce.h"

#include <cstddef>
#include <functional>

class TextSwing {
public:
    // Back to the beginning of the text.
    void Reset() { m_offset = 0; }
    // Takes one step of `text` in a box of `roomPx`. A text that fits stands at its beginning; a pair of units that is
    // one character stays together. Returns whether the visible start has moved.
    bool Step(WStringView text, int roomPx, const std::function<int(WStringView)>& widthPx);
    // Units before the visible start.
    std::size_t Start() const { return static_cast<std::size_t>(m_offset < 0 ? -m_offset : m_offset); }

private:
    int m_offset = 0; // units; below zero on the way back
};
