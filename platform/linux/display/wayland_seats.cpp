#include "platform/linux/display/wayland_seats.h"

#include <algorithm>
#include <wayland-client.h>

namespace cardsong::display {

namespace {

constexpr std::uint32_t kNewestVersion = 4; // the last whose events mean anything here

template <typename Device>
void Keep(bool isThere, std::unique_ptr<Device>& device, const WaylandInput& input, wl_seat& seat)
{
    if (!isThere)
        device.reset();
    else if (!device)
        device = std::make_unique<Device>(input, seat);
}

} // namespace

void WaylandSeats::Seat::SetCapabilities(std::uint32_t capabilities)
{
    Keep((capabilities & WL_SEAT_CAPABILITY_POINTER) != 0, pointer, input, *object);
    Keep((capabilities & WL_SEAT_CAPABILITY_TOUCH) != 0, touch, input, *object);
    Keep((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0, keyboard, input, *object);
}

void WaylandSeats::Add(wl_registry& registry, std::uint32_t name, std::uint32_t version)
{
    static constexpr wl_seat_listener kListener = {
        .capabilities = [](void* data, wl_seat*,
                           std::uint32_t capabilities) { static_cast<Seat*>(data)->SetCapabilities(capabilities); },
        .name = kIgnoreEvent,
    };
    auto seat = std::make_unique<Seat>(m_input, name);
    seat->object.reset(static_cast<wl_seat*>(
        wl_registry_bind(&registry, name, &wl_seat_interface, std::min(version, kNewestVersion))));
    wl_seat_add_listener(seat->object.get(), &kListener, seat.get());
    m_seats.push_back(std::move(seat));
}

void WaylandSeats::Remove(std::uint32_t name)
{
    std::erase_if(m_seats, [name](const auto& seat) { return seat->name == name; });
}

std::optional<std::uint64_t> WaylandSeats::NextRepeatMs() const
{
    std::optional<std::uint64_t> next;
    for (const auto& seat : m_seats) {
        const auto own = seat->keyboard ? seat->keyboard->NextRepeatMs() : std::nullopt;
        if (own && (!next || *own < *next))
            next = own;
    }
    return next;
}

void WaylandSeats::RepeatKeys(wl_display& display, std::uint64_t nowMs)
{
    for (const auto& seat : m_seats) {
        if (seat->keyboard)
            seat->keyboard->RepeatIfDue(display, nowMs);
    }
}

WaylandPress WaylandSeats::LastPress() const
{
    WaylandPress last;
    const auto take = [&last](const Seat& seat, std::uint32_t serial) {
        if (serial > last.serial)
            last = { seat.object.get(), serial };
    };
    for (const auto& seat : m_seats) {
        take(*seat, seat->pointer ? seat->pointer->LastPress() : 0);
        take(*seat, seat->touch ? seat->touch->LastPress() : 0);
        take(*seat, seat->keyboard ? seat->keyboard->LastPress() : 0);
    }
    return last;
}

} // namespace cardsong::display
