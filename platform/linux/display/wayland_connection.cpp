#include "platform/linux/display/wayland_connection.h"

#include "platform/linux/display/wayland_socket.h"
#include "platform/linux/kernel/clock.h"

#include <cerrno>
#include <cstdlib>
#include <poll.h>
#include <system_error>
#include <wayland-client.h>

namespace cardsong::display {

std::string WaylandConnection::Connect(const std::string& name, int limitMs)
{
    if (std::getenv("WAYLAND_SOCKET") != nullptr) { // a connection that was handed down: the library takes it up
        m_display.reset(wl_display_connect(nullptr));
        return m_display ? std::string() : "WAYLAND_SOCKET is no connection";
    }
    std::string trouble;
    const int connection = ConnectToCompositor(name, limitMs, trouble);
    if (connection < 0)
        return trouble;
    m_display.reset(wl_display_connect_to_fd(connection)); // closes it, also if it fails
    return m_display ? std::string() : std::generic_category().message(errno);
}

bool WaylandConnection::Dispatch()
{
    const int count = wl_display_dispatch_pending(m_display.get());
    m_isLost = m_isLost || count < 0;
    return count > 0;
}

bool WaylandConnection::Wait(EventWait& wait, int limitMs)
{
    if (m_isLost)
        return false;
    wl_display* const display = m_display.get();
    if (wl_display_prepare_read(display) != 0)
        return true; // events wait to be handed out
    // A compositor that hangs takes nothing any more. Other troubles show when reading.
    const bool isFull = wl_display_flush(display) < 0 && errno == EAGAIN;
    const short events = isFull ? POLLIN | POLLOUT : POLLIN;
    const short came = wait.Wait(wl_display_get_fd(display), events, limitMs);
    if ((came & (POLLIN | POLLHUP | POLLERR)) == 0) {
        wl_display_cancel_read(display);
        return true;
    }
    m_isLost = wl_display_read_events(display) < 0;
    return !m_isLost;
}

bool WaylandConnection::AwaitAnswers(EventWait& wait, int limitMs)
{
    bool isAnswered = false;
    static constexpr wl_callback_listener kListener = { [](void* data, wl_callback*, std::uint32_t) {
        *static_cast<bool*>(data) = true;
    } };
    const WaylandPtr<wl_callback> callback(wl_display_sync(m_display.get()));
    wl_callback_add_listener(callback.get(), &kListener, &isAnswered);
    const std::uint64_t endMs = kernel::CurrentClock().NowMs() + static_cast<std::uint64_t>(limitMs);
    while (!isAnswered) {
        const bool handled = Dispatch();
        const std::uint64_t nowMs = kernel::CurrentClock().NowMs();
        if (isAnswered || nowMs >= endMs) // a compositor may say much without an answer
            break;
        if (!handled && !Wait(wait, static_cast<int>(endMs - nowMs)))
            break;
    }
    return isAnswered;
}

void WaylandConnection::Close()
{
    if (m_display && !m_isLost)
        wl_display_flush(m_display.get());
    m_display.reset();
}

} // namespace cardsong::display
