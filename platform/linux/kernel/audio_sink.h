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

// "pulse", "alsa", "null" (silent, in real time) or the name of a GStreamer sink; empty: the first that works.
inline void SetAudioSink(std::string name)
{
    AudioSinkSetting() = std::move(name);
}

inline const std::string& AudioSink()
{
    return AudioSinkSetting();
}

} // namespace cardsong::kernel
