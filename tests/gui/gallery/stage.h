// Where a picture of the gallery is taken: the built device tree in one language, a screen that nobody sees, a clock
// that stands still.
#pragma once

#include "platform/ce.h"
#include "platform/linux/kernel/clock.h"
#include "tests/platform/scratch_device.h"

#include <span>
#include <string>

namespace cardsong::gallery {

class Stage {
public:
    // `pngPath`: the host file that Shoot writes.
    Stage(LANGID language, std::string pngPath);
    ~Stage(); // what is left of windows goes
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    // The one that goes with the language.
    template <typename Choice>
    Choice Choose(Choice english, Choice traditional, Choice simplified) const
    {
        if (m_language == kTraditional)
            return traditional;
        return m_language == kSimplified ? simplified : english;
    }
    // A window as large as the screen that owns what the picture shows; it draws nothing.
    HWND Owner() const { return m_owner; }

    // Delivers all messages that wait, paints included.
    static void Pump();
    static void Tap(POINT at);
    void Advance(int milliseconds);
    // Writes the screen as it stands. A picture that does so never, or cannot, is reported.
    void Shoot();
    bool IsShot() const { return m_isShot; }

private:
    static constexpr LANGID kTraditional = 0x0404;
    static constexpr LANGID kSimplified = 0x0804;

    test::ScratchDevice m_device;
    kernel::VirtualClock m_clock;
    LANGID m_language;
    std::string m_pngPath;
    HWND m_owner = nullptr;
    bool m_isShot = false;
};

struct Picture {
    const char* name; // of the file, without language and ending
    void (*take)(Stage& stage);
};

// Each family of windows has its pictures in a file of its own.
std::span<const Picture> AlertPictures();
std::span<const Picture> ListPictures();
std::span<const Picture> SoftKeyPictures();

} // namespace cardsong::gallery
