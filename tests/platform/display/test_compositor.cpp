#include "tests/platform/display/test_compositor.h"

#include "tests/platform/display/test_surfaces.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <wayland-server.h>
#include <xdg-shell-server-protocol.h>

namespace cardsong::test {

namespace {

std::filesystem::path MakeFolder()
{
    std::string path = "/tmp/cardsong-wayland-XXXXXX";
    return mkdtemp(path.data());
}

} // namespace

std::uint32_t CompositorState::NextSerial() const
{
    return wl_display_next_serial(display);
}

std::uint32_t CompositorState::Configure(SIZE size, const std::vector<std::uint32_t>& states)
{
    wl_array array;
    wl_array_init(&array);
    for (const std::uint32_t state : states)
        *static_cast<std::uint32_t*>(wl_array_add(&array, sizeof(state))) = state;
    xdg_toplevel_send_configure(topLevel, static_cast<int>(size.cx), static_cast<int>(size.cy), &array);
    wl_array_release(&array);
    const std::uint32_t serial = NextSerial();
    xdg_surface_send_configure(shellSurface, serial);
    return serial;
}

void CompositorState::TakeAway(const std::string& interface)
{
    wl_global_remove(globals.at(interface));
}

void CompositorState::PlugIn(int scale)
{
    offer.scale = scale;
    OfferOutput(*this);
}

std::uint32_t CompositorState::Ping() const
{
    const std::uint32_t serial = NextSerial();
    xdg_wm_base_send_ping(shell, serial);
    return serial;
}

void CompositorState::CallForFrame()
{
    for (wl_resource* call : std::exchange(frameCalls, {})) {
        wl_callback_send_done(call, 0);
        wl_resource_destroy(call);
    }
}

void CompositorState::Release()
{
    for (const auto& held : std::exchange(heldBuffers, {}))
        wl_buffer_send_release(held.first);
}

TestCompositor::TestCompositor(const CompositorOffer& offer)
    : m_folder(MakeFolder()), m_wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    m_state.offer = offer;
    m_state.display = wl_display_create();
    const std::string path = SocketPath();
    if (wl_display_add_socket(m_state.display, path.c_str()) != 0)
        std::abort();
    OfferGlobals(m_state);
    m_thread = std::thread([this] { Run(); });
}

TestCompositor::~TestCompositor()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    eventfd_write(m_wakeUp, 1);
    m_thread.join();
    wl_display_destroy_clients(m_state.display);
    wl_display_destroy(m_state.display);
    close(m_wakeUp);
    std::filesystem::remove_all(m_folder);
}

void TestCompositor::Run()
{
    wl_event_loop* const loop = wl_display_get_event_loop(m_state.display);
    for (;;) {
        {
            const std::lock_guard lock(m_mutex);
            if (m_ends)
                return;
            if (!m_hangs)
                wl_event_loop_dispatch(loop, 0);
            wl_display_flush_clients(m_state.display);
            m_changed.notify_all();
        }
        std::array<pollfd, 2> sources = { { { m_wakeUp, POLLIN, 0 }, { wl_event_loop_get_fd(loop), POLLIN, 0 } } };
        poll(sources.data(), m_hangs ? 1 : 2, -1);
        eventfd_t count = 0;
        eventfd_read(m_wakeUp, &count);
    }
}

void TestCompositor::With(const std::function<void(CompositorState&)>& act)
{
    const std::lock_guard lock(m_mutex);
    act(m_state);
    wl_display_flush_clients(m_state.display);
}

bool TestCompositor::Await(const std::function<bool(const CompositorState&)>& isTrue)
{
    constexpr auto kGiveUp = std::chrono::seconds(20);
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, kGiveUp, [&] { return isTrue(m_state); });
}

void TestCompositor::Hang()
{
    const std::lock_guard lock(m_mutex);
    m_hangs = true;
    eventfd_write(m_wakeUp, 1);
}

void TestCompositor::WakeUp()
{
    const std::lock_guard lock(m_mutex);
    m_hangs = false;
    eventfd_write(m_wakeUp, 1);
}

void TestCompositor::Die()
{
    const std::lock_guard lock(m_mutex);
    wl_display_destroy_clients(m_state.display);
}

} // namespace cardsong::test
