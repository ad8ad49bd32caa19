// Which sound output the user asked for. The host says it before the first song; engines read it as each song opens.
#pragma once

#include <string>
#include <utility>

namespace cardsong::kernel {

inline std::string& AudioSinkSetting()
{
    static std::string s_name;
    return s_name;
}

// Empty: the first that works. On Linux "pulse", "alsa", "null" (silent, in real time) or the name of a GStreamer sink;
// on Windows an audio renderer by the name under which the system lists it, in UTF-8. A name that does not open counts
// as empty.
inline void SetAudioSink(std::string name)
{
    AudioSinkSetting() = std::move(name);
}

inline const std::string& AudioSink()
{
    return AudioSinkSetting();
}

} // namespace cardsong::kernel
