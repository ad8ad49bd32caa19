// A keyboard: its keys strike under the names that the tables of keys use, and repeat while they are held. A compositor
// that hangs does not tell that a key went up: each repeated strike waits for its answer.
#pragma once

#include "platform/linux/display/key_repeat.h"
#include "platform/linux/display/wayland_input.h"
#include "platform/linux/display/wayland_keymap.h"
#include "platform/linux/display/wayland_objects.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cardsong::display {

class WaylandKeyboard {
public:
    WaylandKeyboard(const WaylandInput& input, wl_seat& seat);
    // Keys that are held go up, and the window has no keyboard any more.
    ~WaylandKeyboard();
    WaylandKeyboard(const WaylandKeyboard&) = delete;
    WaylandKeyboard& operator=(const WaylandKeyboard&) = delete;

    // When to call RepeatIfDue next; nothing while no key is held, or an answer is awaited.
    std::optional<std::uint64_t> NextRepeatMs() const { return m_question ? std::nullopt : m_repeat.NextMs(); }
    // If it is time for a strike, asks the compositor of `display` for a sign of life; the strike comes with it.
    void RepeatIfDue(wl_display& display, std::uint64_t nowMs);
    // Of the last key, for which a desktop may grant more; 0: there was none.
    std::uint32_t LastPress() const { return m_lastPress; }

private:
    struct HeldKey {
        std::uint32_t key;
        std::string name;
    };
    void Listen();
    void Down(std::uint32_t serial, std::uint32_t key);
    void Up(std::uint32_t key);
    void Leave();
    void StrikeAgain();

    const WaylandInput m_input;
    WaylandPtr<wl_keyboard> m_keyboard;
    WaylandKeymap m_keymap;
    KeyRepeat m_repeat;
    WaylandPtr<wl_callback> m_question; // for the key that repeats: not answered yet
    std::vector<HeldKey> m_held;
    std::uint32_t m_lastPress = 0;
    bool m_isHere = false; // its keys are meant for the window
};

} // namespace cardsong::display
