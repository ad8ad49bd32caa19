// The seats of a Wayland desktop: who sits there has a mouse, a touch screen and a keyboard, or some of them; they may
// be plugged in and pulled out at any time. The display's thread only.
#pragma once

#include "platform/linux/display/wayland_input.h"
#include "platform/linux/display/wayland_keyboard.h"
#include "platform/linux/display/wayland_objects.h"
#include "platform/linux/display/wayland_pointer.h"
#include "platform/linux/display/wayland_touch.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace cardsong::display {

// What a user did last, as the proof that a desktop may ask for.
struct WaylandPress {
    wl_seat* seat = nullptr; // null: nothing yet
    std::uint32_t serial = 0;
};

class WaylandSeats {
public:
    explicit WaylandSeats(const WaylandInput& input) : m_input(input) {}
    void Add(wl_registry& registry, std::uint32_t name, std::uint32_t version);
    // Nothing for a name of something else.
    void Remove(std::uint32_t name);
    void Close() { m_seats.clear(); }
    // When to call RepeatKeys next; nothing while no key waits for its time.
    std::optional<std::uint64_t> NextRepeatMs() const;
    // Keys that are held strike again as soon as the compositor of `display` answers.
    void RepeatKeys(wl_display& display, std::uint64_t nowMs);
    WaylandPress LastPress() const;

private:
    struct Seat {
        Seat(const WaylandInput& owner, std::uint32_t number) : input(owner), name(number) {}

        const WaylandInput& input;
        const std::uint32_t name;
        WaylandPtr<wl_seat> object;
        std::unique_ptr<WaylandPointer> pointer;
        std::unique_ptr<WaylandTouch> touch;
        std::unique_ptr<WaylandKeyboard> keyboard;

        void SetCapabilities(std::uint32_t capabilities);
    };

    const WaylandInput m_input;
    std::vector<std::unique_ptr<Seat>> m_seats;
};

} // namespace cardsong::display
