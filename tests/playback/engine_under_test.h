// What the tests have to know of the engine that they are linked with. One source for each engine says it.
#pragma once

namespace cardsong::test {

// For kernel::SetAudioSink: silent where the engine can be.
const char* SinkForTests();
// Whether a song can be heard, or at least keeps time unheard.
bool HasSoundOutput();
// False where the graph takes a speed and plays on with the song's own.
bool KeepsRate();

} // namespace cardsong::test
