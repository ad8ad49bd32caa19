// Plays one short sound at a time, beside whatever song plays. Nobody waits for the sound server but a thread of its
// own, which lives as long as there is something to play.
#pragma once

#include "platform/linux/sound/wave_file.h"

#include <chrono>
#include <vector>

namespace cardsong::sound {

struct Sound {
    std::vector<std::byte> file;
    WaveSound wave; // its samples lie in `file`
};

// In place of the sound before. Returns at once; a server that hangs plays what was asked last when it answers.
void StartSound(Sound sound);
// The sound falls silent as soon as the server answers. Returns at once.
void StopSound();
// Stops the sound and waits until its chain is down; false when the server takes longer than `limit`. For the program's
// end.
bool EndSound(std::chrono::milliseconds limit);

} // namespace cardsong::sound
