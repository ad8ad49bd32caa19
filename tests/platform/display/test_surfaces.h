// What the compositor for tests answers to its client's requests.
#pragma once

#include "tests/platform/display/test_compositor.h"

#include <algorithm>
#include <wayland-server.h>

namespace cardsong::test {

// Offers all that `state.offer` has. `state` lives longer than its clients.
void OfferGlobals(CompositorState& state);
// Of that, the seat.
void OfferSeat(CompositorState& state);
// Of that, the screen.
void OfferOutput(CompositorState& state);

// Makes an interface known, unless the test does without it. `Bind` fills the new resource.
template <auto Bind>
void OfferGlobal(CompositorState& state, const wl_interface& interface, std::uint32_t version)
{
    if (state.offer.without.contains(interface.name))
        return;
    state.globals[interface.name] =
        wl_global_create(state.display, &interface, static_cast<int>(version), &state,
                         [](wl_client* client, void* data, std::uint32_t boundVersion, std::uint32_t id) {
                             Bind(*static_cast<CompositorState*>(data), client, boundVersion, id);
                         });
}

inline CompositorState& StateOf(wl_resource* resource)
{
    return *static_cast<CompositorState*>(wl_resource_get_user_data(resource));
}

// A resource that the state remembers in `Field` as long as it lives.
template <auto Field>
wl_resource* MakeRemembered(CompositorState& state, wl_client* client, const wl_interface& interface, int version,
                            std::uint32_t id, const void* requests)
{
    wl_resource* const made = wl_resource_create(client, &interface, version, id);
    state.*Field = made;
    wl_resource_set_implementation(made, requests, &state, [](wl_resource* gone) {
        if (StateOf(gone).*Field == gone)
            StateOf(gone).*Field = nullptr;
    });
    return made;
}

// A request that ends its object, and one that means nothing to a test.
constexpr auto kDestroyResource = [](wl_client*, wl_resource* resource) { wl_resource_destroy(resource); };
constexpr auto kIgnoreRequest = [](auto...) {};

} // namespace cardsong::test
