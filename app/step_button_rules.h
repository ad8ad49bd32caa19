// Which of the step buttons, previous and next, are on. The answer depends on the road that leads there, and each road
// has its own rule. Knows no window.
#pragma once

#include "app/play_modes.h"

enum class ButtonChange { Keep, Enable, Disable };

struct StepButtonChange {
    ButtonChange previous = ButtonChange::Keep;
    ButtonChange next = ButtonChange::Keep;
    bool operator==(const StepButtonChange&) const = default;
};

// The current song's 1-based number in a list of `count` songs.
struct PlaceInList {
    std::int32_t number;
    std::int32_t count;
};

[[nodiscard]] StepButtonChange WhenMarkedSongPlays(PlaceInList place, const PlayModes& modes);
// The first song of the list plays.
[[nodiscard]] StepButtonChange WhenNoSongIsMarked(const PlayModes& modes);
[[nodiscard]] StepButtonChange WhenShuffleGoesOn();
[[nodiscard]] StepButtonChange WhenShuffleGoesOff(PlaceInList place, const PlayModes& modes);
[[nodiscard]] StepButtonChange WhenRepeatGoesToAll();
[[nodiscard]] StepButtonChange WhenRepeatGoesToSingleOrOff(PlaceInList place);
