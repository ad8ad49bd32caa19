#include "platform/linux/display/x_connection.h"

#include <SDL_syswm.h>

#include <dlfcn.h>

namespace cardsong::display {
namespace {

// A function of the X library, if the window library has loaded it; null when it has not. Loads none itself.
template <typename Function>
Function* FindFunction(const char* name)
{
    void* const handle = dlopen("libX11.so.6", RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr)
        return nullptr;
    const auto found = reinterpret_cast<Function*>(dlsym(handle, name));
    dlclose(handle); // its other user keeps it
    return found;
}

void (*g_onXServerLost)() = nullptr;

} // namespace

int ConnectionOf(SDL_Window& window)
{
#ifdef SDL_VIDEO_DRIVER_X11
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (SDL_GetWindowWMInfo(&window, &info) == SDL_FALSE || info.subsystem != SDL_SYSWM_X11)
        return -1;
    const auto number = FindFunction<int(void*)>("XConnectionNumber");
    return number != nullptr ? number(info.info.x11.display) : -1;
#else
    return -1;
#endif
}

void OnXServerLost(void (*lost)())
{
    using Handler = int(void*);
    g_onXServerLost = lost;
    if (const auto install = FindFunction<Handler*(Handler*)>("XSetIOErrorHandler"))
        install([](void*) {
            g_onXServerLost();
            return 0;
        });
}

} // namespace cardsong::display
