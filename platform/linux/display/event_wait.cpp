#include "platform/linux/display/event_wait.h"

#include <SDL_syswm.h>

#include <array>
#include <dlfcn.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace cardsong::display {
namespace {

// No server tells of input on a bare screen. Nobody feels the delay of looking for it so often.
constexpr int kLookEveryMs = 20;

// A function of a library that the window library has loaded; null when it has not. Loads none itself.
template <typename Function>
Function* FindFunction(const char* library, const char* name)
{
    void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr)
        return nullptr;
    const auto found = reinterpret_cast<Function*>(dlsym(handle, name));
    dlclose(handle); // its other user keeps it
    return found;
}

int ConnectionFrom(const char* library, const char* name, void* server)
{
    const auto number = FindFunction<int(void*)>(library, name);
    return number != nullptr ? number(server) : -1;
}

int ConnectionOf(SDL_Window& window)
{
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (SDL_GetWindowWMInfo(&window, &info) == SDL_FALSE)
        return -1;
#ifdef SDL_VIDEO_DRIVER_X11
    if (info.subsystem == SDL_SYSWM_X11)
        return ConnectionFrom("libX11.so.6", "XConnectionNumber", info.info.x11.display);
#endif
#ifdef SDL_VIDEO_DRIVER_WAYLAND
    if (info.subsystem == SDL_SYSWM_WAYLAND)
        return ConnectionFrom("libwayland-client.so.0", "wl_display_get_fd", info.info.wl.display);
#endif
    return -1;
}

void (*g_onXServerLost)() = nullptr;

} // namespace

EventWait::EventWait() : m_wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

EventWait::~EventWait()
{
    close(m_wakeUp);
}

void EventWait::WakeUp()
{
    eventfd_write(m_wakeUp, 1);
}

void EventWait::Watch(SDL_Window& window)
{
    m_server = ConnectionOf(window);
}

bool EventWait::Wait()
{
    std::array<pollfd, 2> sources = { { { m_wakeUp, POLLIN, 0 }, { m_server, POLLIN, 0 } } };
    poll(sources.data(), sources.size(), m_server < 0 ? kLookEveryMs : -1);
    eventfd_t count = 0;
    eventfd_read(m_wakeUp, &count);
    return (sources[1].revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
}

void OnXServerLost(void (*lost)())
{
    using Handler = int(void*);
    g_onXServerLost = lost;
    if (const auto install = FindFunction<Handler*(Handler*)>("libX11.so.6", "XSetIOErrorHandler"))
        install([](void*) {
            g_onXServerLost();
            return 0;
        });
}

} // namespace cardsong::display
