// Chooses where the sound of a graph goes, by the name under which the system lists a renderer. Knows no song.
#pragma once

#include "platform/ce.h"

#include <dshow.h>

namespace cardsong::playback {

// Puts the renderer of kernel::AudioSink into the graph, which then prefers it to the system's default. No name, an
// unknown one and one that does not open leave the graph as it is.
void AddWishedRenderer(IGraphBuilder& graph);

} // namespace cardsong::playback
