// What a song is played with: each element's factory and the plug-in that holds it. The one list for the engine and for
// whoever asks whether this machine can play. Starts nothing.
#pragma once

namespace cardsong::sound {

struct Part {
    const char* factory;
    const char* plugin; // see MakeElement
};

// Every song.
inline constexpr Part kConvert = { "audioconvert", "audioconvert" };
inline constexpr Part kResample = { "audioresample", "audioresample" };
inline constexpr Part kVolume = { "volume", "volume" };
// A song that is louder on one side.
inline constexpr Part kBalance = { "audiopanorama", "audiofx" };

inline constexpr Part kMp3Decoder = { "mpg123audiodec", "mpg123" };

// WMA.
inline constexpr Part kFileSource = { "filesrc", "coreelements" };
inline constexpr Part kAsfDemultiplexer = { "asfdemux", "asf" };
inline constexpr const char* kWmaPlugin = "libav"; // of every decoder
inline constexpr const char* kUsualWmaDecoder = "avdec_wmav2";

} // namespace cardsong::sound
