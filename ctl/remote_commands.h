// The commands that act on a player that runs: "play", "next", "audio-state" and their like.
#pragma once

#include "ctl/command.h"

// In the order of the help.
[[nodiscard]] std::span<const Command> RemoteCommands();
