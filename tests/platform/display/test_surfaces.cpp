#include "tests/platform/display/test_surfaces.h"

#include <xdg-activation-v1-server-protocol.h>
#include <xdg-decoration-unstable-v1-server-protocol.h>
#include <xdg-shell-server-protocol.h>

namespace cardsong::test {

namespace {

// A surface: the window's, until it turns out to be the arrow's. Its state waits for a commit.
struct Surface {
    CompositorState& state;
    wl_resource* buffer = nullptr;
    bool hasNewBuffer = false;
    std::vector<RECT> damage = {};
    std::vector<wl_resource*> calls = {};
    int scale = 1;
};

Surface& SurfaceOf(wl_resource* resource)
{
    return *static_cast<Surface*>(wl_resource_get_user_data(resource));
}

ShownPicture PictureOf(wl_resource* buffer)
{
    wl_shm_buffer* const memory = wl_shm_buffer_get(buffer);
    ShownPicture picture{ wl_shm_buffer_get_width(memory), wl_shm_buffer_get_height(memory), {} };
    wl_shm_buffer_begin_access(memory);
    const auto* row = static_cast<const std::uint8_t*>(wl_shm_buffer_get_data(memory));
    for (int y = 0; y < picture.heightPx; ++y, row += wl_shm_buffer_get_stride(memory)) {
        const auto* const words = reinterpret_cast<const std::uint32_t*>(row);
        picture.pixels.insert(picture.pixels.end(), words, words + picture.widthPx);
    }
    wl_shm_buffer_end_access(memory);
    return picture;
}

void TakeDamaged(const ShownPicture& buffer, const std::vector<RECT>& damage, ShownPicture& screen)
{
    if (screen.widthPx != buffer.widthPx || screen.heightPx != buffer.heightPx) {
        screen = buffer;
        screen.pixels.assign(buffer.pixels.size(), 0xDEAD);
    }
    for (const RECT& part : damage) {
        for (LONG y = std::max<LONG>(0, part.top); y < std::min<LONG>(part.bottom, screen.heightPx); ++y) {
            for (LONG x = std::max<LONG>(0, part.left); x < std::min<LONG>(part.right, screen.widthPx); ++x) {
                const auto at = static_cast<std::size_t>(y * screen.widthPx + x);
                screen.pixels[at] = buffer.pixels[at];
            }
        }
    }
}

void KeepOrRelease(CompositorState& state, wl_resource* buffer)
{
    if (state.offer.releases == ReleaseBuffers::WhenReplaced && !state.heldBuffers.contains(buffer))
        state.Release();
    if (state.offer.releases == ReleaseBuffers::AtOnce)
        wl_buffer_send_release(buffer);
    else
        state.heldBuffers.emplace(buffer, state.buffer);
}

void ForgetBufferWithItsEnd(CompositorState& state, wl_resource* buffer)
{
    struct Watch {
        wl_listener listener;
        CompositorState* state;
    };
    const auto forget = [](wl_listener* listener, void* gone) {
        auto* const watch = reinterpret_cast<Watch*>(listener);
        watch->state->heldBuffers.erase(static_cast<wl_resource*>(gone));
        delete watch;
    };
    if (state.heldBuffers.contains(buffer))
        return;
    auto* const watch = new Watch{ {}, &state };
    watch->listener.notify = forget;
    wl_resource_add_destroy_listener(buffer, &watch->listener);
}

void CommitBuffer(Surface& surface)
{
    CompositorState& state = surface.state;
    for (const auto& [buffer, picture] : state.heldBuffers) {
        if (buffer == surface.buffer || PictureOf(buffer).pixels != picture.pixels)
            state.wasHeldBufferChanged = true;
    }
    ++state.commits;
    state.bufferScale = surface.scale;
    state.buffer = PictureOf(surface.buffer);
    state.damage = std::exchange(surface.damage, {});
    TakeDamaged(state.buffer, state.damage, state.screen);
    ForgetBufferWithItsEnd(state, surface.buffer);
    KeepOrRelease(state, surface.buffer);
}

void Commit(wl_client*, wl_resource* resource)
{
    Surface& surface = SurfaceOf(resource);
    CompositorState& state = surface.state;
    if (resource != state.surface)
        return;
    if (std::exchange(surface.hasNewBuffer, false) && surface.buffer != nullptr)
        CommitBuffer(surface);
    else if (state.commits == 0 && state.ackedSerial == 0 && state.offer.configures && state.topLevel != nullptr)
        state.Configure(state.offer.windowSize, { XDG_TOPLEVEL_STATE_ACTIVATED });
    std::ranges::move(std::exchange(surface.calls, {}), std::back_inserter(state.frameCalls));
    if (state.offer.callsForFrames)
        state.CallForFrame();
}

const struct wl_surface_interface kSurface = {
    .destroy = kDestroyResource,
    .attach =
        [](wl_client*, wl_resource* surface, wl_resource* buffer, int, int) {
            SurfaceOf(surface).buffer = buffer;
            SurfaceOf(surface).hasNewBuffer = true;
        },
    .damage = kIgnoreRequest,
    .frame =
        [](wl_client* client, wl_resource* surface, std::uint32_t id) {
            SurfaceOf(surface).calls.push_back(wl_resource_create(client, &wl_callback_interface, 1, id));
        },
    .set_opaque_region = kIgnoreRequest,
    .set_input_region = kIgnoreRequest,
    .commit = Commit,
    .set_buffer_transform = kIgnoreRequest,
    .set_buffer_scale = [](wl_client*, wl_resource* surface, int scale) { SurfaceOf(surface).scale = scale; },
    .damage_buffer =
        [](wl_client*, wl_resource* surface, int x, int y, int width, int height) {
            SurfaceOf(surface).damage.push_back({ x, y, x + width, y + height });
        },
    .offset = kIgnoreRequest,
};

const struct wl_compositor_interface kCompositor = {
    .create_surface =
        [](wl_client* client, wl_resource* compositor, std::uint32_t id) {
            wl_resource* const made =
                wl_resource_create(client, &wl_surface_interface, wl_resource_get_version(compositor), id);
            wl_resource_set_implementation(made, &kSurface, new Surface{ StateOf(compositor) }, [](wl_resource* gone) {
                if (SurfaceOf(gone).state.surface == gone)
                    SurfaceOf(gone).state.surface = nullptr;
                delete &SurfaceOf(gone);
            });
        },
    .create_region = kIgnoreRequest,
};

const struct xdg_toplevel_interface kTopLevel = {
    .destroy = kDestroyResource,
    .set_parent = kIgnoreRequest,
    .set_title = [](wl_client*, wl_resource* window, const char* title) { StateOf(window).title = title; },
    .set_app_id = [](wl_client*, wl_resource* window, const char* appId) { StateOf(window).appId = appId; },
    .show_window_menu = [](wl_client*, wl_resource* window, wl_resource*, std::uint32_t, int,
                           int) { ++StateOf(window).menusAsked; },
    .move = kIgnoreRequest,
    .resize = kIgnoreRequest,
    .set_max_size = kIgnoreRequest,
    .set_min_size =
        [](wl_client*, wl_resource* window, int width, int height) {
            StateOf(window).smallest = { width, height };
        },
    .set_maximized = kIgnoreRequest,
    .unset_maximized = kIgnoreRequest,
    .set_fullscreen = [](wl_client*, wl_resource* window, wl_resource*) { StateOf(window).wantsFullScreen = true; },
    .unset_fullscreen = kIgnoreRequest,
    .set_minimized = kIgnoreRequest,
};

const struct xdg_surface_interface kShellSurface = {
    .destroy = kDestroyResource,
    .get_toplevel =
        [](wl_client* client, wl_resource* shellSurface, std::uint32_t id) {
            MakeRemembered<&CompositorState::topLevel>(StateOf(shellSurface), client, xdg_toplevel_interface,
                                                       wl_resource_get_version(shellSurface), id, &kTopLevel);
        },
    .get_popup = kIgnoreRequest,
    .set_window_geometry = kIgnoreRequest,
    .ack_configure = [](wl_client*, wl_resource* shellSurface,
                        std::uint32_t serial) { StateOf(shellSurface).ackedSerial = serial; },
};

const struct xdg_wm_base_interface kShell = {
    .destroy = kDestroyResource,
    .create_positioner = kIgnoreRequest,
    .get_xdg_surface =
        [](wl_client* client, wl_resource* shell, std::uint32_t id, wl_resource* surface) {
            StateOf(shell).surface = surface;
            MakeRemembered<&CompositorState::shellSurface>(StateOf(shell), client, xdg_surface_interface,
                                                           wl_resource_get_version(shell), id, &kShellSurface);
        },
    .pong = [](wl_client*, wl_resource* shell, std::uint32_t serial) { StateOf(shell).pongSerial = serial; },
};

const struct zxdg_toplevel_decoration_v1_interface kDecoration = {
    .destroy = kDestroyResource,
    .set_mode =
        [](wl_client*, wl_resource* decoration, std::uint32_t mode) {
            StateOf(decoration).wantsFrame = mode == ZXDG_TOPLEVEL_DECORATION_V1_MODE_SERVER_SIDE;
            zxdg_toplevel_decoration_v1_send_configure(decoration, mode);
        },
    .unset_mode = kIgnoreRequest,
};

const struct zxdg_decoration_manager_v1_interface kDecorations = {
    .destroy = kDestroyResource,
    .get_toplevel_decoration =
        [](wl_client* client, wl_resource* manager, std::uint32_t id, wl_resource*) {
            MakeRemembered<&CompositorState::decoration>(StateOf(manager), client,
                                                         zxdg_toplevel_decoration_v1_interface, 1, id, &kDecoration);
        },
};

const struct xdg_activation_token_v1_interface kToken = {
    .set_serial = [](wl_client*, wl_resource* token, std::uint32_t serial,
                     wl_resource*) { StateOf(token).activationSerial = serial; },
    .set_app_id = kIgnoreRequest,
    .set_surface = kIgnoreRequest,
    .commit = [](wl_client*, wl_resource* token) { xdg_activation_token_v1_send_done(token, "proof"); },
    .destroy = kDestroyResource,
};

const struct xdg_activation_v1_interface kActivation = {
    .destroy = kDestroyResource,
    .get_activation_token =
        [](wl_client* client, wl_resource* activation, std::uint32_t id) {
            MakeRemembered<&CompositorState::activationToken>(StateOf(activation), client,
                                                              xdg_activation_token_v1_interface, 1, id, &kToken);
        },
    .activate = [](wl_client*, wl_resource* activation, const char* token,
                   wl_resource*) { StateOf(activation).activations.emplace_back(token); },
};

template <const auto& Interface, const auto& Requests>
void BindPlain(CompositorState& state, wl_client* client, std::uint32_t version, std::uint32_t id)
{
    wl_resource* const made = wl_resource_create(client, &Interface, static_cast<int>(version), id);
    wl_resource_set_implementation(made, &Requests, &state, nullptr);
}

void BindShell(CompositorState& state, wl_client* client, std::uint32_t version, std::uint32_t id)
{
    MakeRemembered<&CompositorState::shell>(state, client, xdg_wm_base_interface, static_cast<int>(version), id,
                                            &kShell);
}

void BindOutput(CompositorState& state, wl_client* client, std::uint32_t version, std::uint32_t id)
{
    static const struct wl_output_interface kOutput = { .release = kDestroyResource };
    wl_resource* const output = MakeRemembered<&CompositorState::output>(state, client, wl_output_interface,
                                                                         static_cast<int>(version), id, &kOutput);
    wl_output_send_geometry(output, 0, 0, 0, 0, 0, "", "", state.offer.outputTransform);
    wl_output_send_mode(output, 0, 77, 77, 0); // one that it could show, and does not
    wl_output_send_mode(output, WL_OUTPUT_MODE_CURRENT, state.offer.outputWidthPx, state.offer.outputHeightPx, 0);
    if (version < WL_OUTPUT_SCALE_SINCE_VERSION)
        return;
    wl_output_send_scale(output, state.offer.scale);
    wl_output_send_done(output);
}

} // namespace

void OfferGlobals(CompositorState& state)
{
    OfferGlobal<BindPlain<wl_compositor_interface, kCompositor>>(state, wl_compositor_interface,
                                                                 state.offer.compositorVersion);
    if (!state.offer.without.contains(wl_shm_interface.name))
        wl_display_init_shm(state.display);
    OfferGlobal<BindShell>(state, xdg_wm_base_interface, 4);
    OfferGlobal<BindPlain<zxdg_decoration_manager_v1_interface, kDecorations>>(state,
                                                                               zxdg_decoration_manager_v1_interface, 1);
    OfferGlobal<BindPlain<xdg_activation_v1_interface, kActivation>>(state, xdg_activation_v1_interface, 1);
    OfferOutput(state);
    OfferSeat(state);
}

void OfferOutput(CompositorState& state)
{
    OfferGlobal<BindOutput>(state, wl_output_interface, std::min(4U, state.offer.otherVersions));
}

} // namespace cardsong::test
