// Which line of the lyrics belongs to a place in the song, and which lines stand beside it. It knows no window.
#pragma once

#include "lyrics/lyric_list.h"

#include <optional>

// Lyrics end with their last line; placeholder lines take turns for ever.
enum class LineOrder { Once, Round };

inline constexpr std::int32_t kNoLine = -1;

struct ChosenLine {
    std::int32_t index;
    std::int64_t positionMs; // of the song; of the round for placeholder lines

    bool operator==(const ChosenLine&) const = default;
};

// The line whose time has come and the next line's has not. Of lyrics the last line comes only after its time; of
// placeholder lines each has kPlaceholderIntervalMs. Nothing before the first line, and of an empty list. `lastShown`:
// where the search begins, kNoLine or an index; it changes nothing but the time that the search takes.
std::optional<ChosenLine> ChooseLine(ConstLyricList lines, LineOrder order, std::int32_t lastShown,
                                     std::int64_t positionMs);

// The neighbours of line `index` of `count`; kNoLine where lyrics have none.
std::int32_t LineBefore(std::int32_t index, std::int32_t count, LineOrder order);
std::int32_t LineAfter(std::int32_t index, std::int32_t count, LineOrder order);
// The one before the one before.
std::int32_t SecondLineBefore(std::int32_t index, std::int32_t count, LineOrder order);
