// An animated GIF, played into the top left corner of a window by a thread of its own. Knows the file and the window,
// and no skin.
#pragma once

#include "platform/ce.h"

#include <cstdint>
#include <memory>

// Its owner decides how long it plays; of all in the process only one plays at a time. Called from one thread.
class GifAnimation {
public:
    GifAnimation();
    ~GifAnimation(); // stops
    GifAnimation(const GifAnimation&) = delete;
    GifAnimation& operator=(const GifAnimation&) = delete;

    // Stops whichever animation plays, then opens the file, tells the size of its pictures and draws them one after the
    // other into `window`, round after round: each one for the time that it asks for, the next at once when it asks for
    // none. Until a first picture could be decoded, one is tried each second. False, and nothing plays, when the file
    // cannot be opened or its size is refused; also when `window` or `path` is null, and then nothing is stopped.
    [[nodiscard]] bool Start(HWND window, LPCWSTR path, std::uint16_t& widthPx, std::uint16_t& heightPx);
    // Lets the picture stand; one that is being drawn is finished. The time goes on: a picture whose time has passed
    // meanwhile makes room as soon as the animation is resumed.
    void Pause();
    void Resume();
    // Returns when the thread has ended, without waiting for a picture's time. Harmless when nothing plays.
    void Stop();

private:
    class Playback;

    std::unique_ptr<Playback> m_playback;
};
