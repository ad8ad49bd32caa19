// The elements that play one sound, wired by hand from its samples to the sink. Knows no player.
#pragma once

#include "platform/linux/sound/gstreamer_library.h"
#include "platform/linux/sound/sound_player.h"

namespace cardsong::sound {

class SoundChain {
public:
    // Begins to play; may wait for the sound server. `onEnd` is called on another thread when the sound is over or
    // cannot go on, and on this one when it cannot be played at all.
    SoundChain(Sound sound, void (*onEnd)());
    // Silences it; may wait for the sound server.
    ~SoundChain();
    SoundChain(const SoundChain&) = delete;
    SoundChain& operator=(const SoundChain&) = delete;

private:
    bool Build(const WaveSound& wave);
    GstElement* Add(ElementPtr element);

    void (*const m_onEnd)();
    ElementPtr m_pipeline;
    GstElement* m_source = nullptr; // the pipeline's
};

} // namespace cardsong::sound
