#include "tests/platform/display/test_surfaces.h"

#include <wayland-server.h>

namespace cardsong::test {

namespace {

const struct wl_pointer_interface kPointer = {
    .set_cursor = [](wl_client*, wl_resource* pointer, std::uint32_t, wl_resource* surface, int,
                     int) { ++(surface != nullptr ? StateOf(pointer).cursorsShown : StateOf(pointer).cursorsHidden); },
    .release = kDestroyResource,
};
const struct wl_keyboard_interface kKeyboard = { .release = kDestroyResource };
const struct wl_touch_interface kTouch = { .release = kDestroyResource };

template <auto Field, const auto& Interface, const auto& Requests>
void GetDevice(wl_client* client, wl_resource* seat, std::uint32_t id)
{
    MakeRemembered<Field>(StateOf(seat), client, Interface, wl_resource_get_version(seat), id, &Requests);
}

const struct wl_seat_interface kSeat = {
    .get_pointer = GetDevice<&CompositorState::pointer, wl_pointer_interface, kPointer>,
    .get_keyboard = GetDevice<&CompositorState::keyboard, wl_keyboard_interface, kKeyboard>,
    .get_touch = GetDevice<&CompositorState::touch, wl_touch_interface, kTouch>,
    .release = kDestroyResource,
};

void BindSeat(CompositorState& state, wl_client* client, std::uint32_t version, std::uint32_t id)
{
    wl_resource* const seat =
        MakeRemembered<&CompositorState::seat>(state, client, wl_seat_interface, static_cast<int>(version), id, &kSeat);
    wl_seat_send_capabilities(seat, state.offer.capabilities);
}

} // namespace

void OfferSeat(CompositorState& state)
{
    OfferGlobal<BindSeat>(state, wl_seat_interface, std::min(8U, state.offer.otherVersions));
}

} // namespace cardsong::test
