// "cardsongctl status": what the player does.
#pragma once

#include "common/player_status.h"
#include "ctl/command.h"

extern const Command kStatusCommand;

// Lines for people, each with its end.
[[nodiscard]] std::string StatusLines(const PlayerStatus& status);
// One JSON object and a line's end.
[[nodiscard]] std::string StatusJson(const PlayerStatus& status);
