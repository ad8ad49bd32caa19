// The play modes: shuffle and repeat, and the numbers that shuffle remembers. Knows no window, no list and no button.
#pragma once

#include <cstdint>

enum class Repeat { Off, All, Single };

// Song numbers are 1-based places in the play list; 0 is none.
struct PlayModes {
    std::int32_t shuffle = 0;         // 1: on
    std::int32_t repeatAll = 0;       // 1: on; never together with repeatOne
    std::int32_t repeatOne = 0;       // 1: on
    std::int32_t shufflePrevious = 0; // where previous goes back to while songs are shuffled
    std::int32_t shuffleNext = 0;     // where next goes forward to after such a step back

    [[nodiscard]] bool IsShuffleOn() const { return shuffle != 0; }
    [[nodiscard]] bool IsRepeatAllOn() const { return repeatAll != 0; }
    [[nodiscard]] Repeat RepeatMode() const;
    void SetRepeat(Repeat mode);
};

extern PlayModes g_playModes;

// The modes one by one.
extern std::int32_t& g_shuffle;
extern std::int32_t& g_repeatAll;
extern std::int32_t& g_repeatOne;
extern std::int32_t& g_shufflePrevious;
extern std::int32_t& g_shuffleNext;
