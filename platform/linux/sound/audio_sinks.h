// Chooses where the sound goes: the sound server, the sound card, or silence that keeps time. Knows no song.
#pragma once

#include "platform/linux/sound/gstreamer_library.h"

#include <string>

namespace cardsong::sound {

// What a sound server is told of the sound: it may ask music to give way, and not a short sound.
enum class SoundRole { Music, Event };

// A sink that opened, by the names of kernel::SetAudioSink. A named one that does not open, and an empty name, give the
// first that works; silence always does. Null only when GStreamer's own core plugin is missing. Returns without waiting
// for a sound server that is not there.
ElementPtr OpenAudioSink(const std::string& name, SoundRole role);

// Whether one is there to be asked. Neither waits.
bool HasSoundServer();
bool HasSoundCard();

} // namespace cardsong::sound
