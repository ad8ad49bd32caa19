#include "platform/linux/display/machine_keys.h"
#include "platform/linux/display/sdl_video.h"
#include "platform/linux/display/sdl_window.h"
#include "platform/linux/display/threaded_display.h"
#include "platform/linux/display/touch_panel.h"
#include "platform/linux/display/x_connection.h"
#include "platform/linux/user/input.h"

#include <SDL.h>

#include <cmath>
#include <poll.h>

namespace cardsong::display {
namespace {

// No server tells of input on a bare screen. Nobody feels the delay of looking for it so often.
constexpr int kLookEveryMs = 20;

// Stand for all mice and all touch screens: the library seldom tells more of them.
constexpr char kMouse = 'm';
constexpr char kTouchScreen = 't';

class SdlDisplay final : public ThreadedDisplay {
public:
    explicit SdlDisplay(const DisplayOptions& options);
    ~SdlDisplay() override { Stop(); }

private:
    std::string Open() override;
    void Close() override;
    bool HandleEvents() override;
    void Show(Frame& frame) override { m_window.Show(frame); }
    void Raise() override { m_window.Raise(); }
    bool Wait(EventWait& wait) override;
    void Abandon() override { m_window.Abandon(); }
    void Handle(const SDL_Event& event);
    void HandleWindowEvent(const SDL_WindowEvent& event);
    void HandleKey(const SDL_KeyboardEvent& event);
    void HandleMouse(const SDL_Event& event);
    void HandleFinger(const SDL_TouchFingerEvent& event);

    static thread_local SdlDisplay* t_display; // whose thread this is

    const DisplayOptions m_options;
    // The display's thread only.
    SdlWindow m_window;
    int m_server = -1; // the connection; -1 where the library reads the input devices itself
    TouchPanel m_panel;
};

thread_local SdlDisplay* SdlDisplay::t_display = nullptr;

SdlDisplay::SdlDisplay(const DisplayOptions& options) : m_options(options)
{
    // The library reads the window's class from the environment, which may change only before other threads start.
    SDL_setenv("SDL_VIDEO_X11_WMCLASS", "cardsong", 0);
}

std::string SdlDisplay::Open()
{
    t_display = this;
    OnXServerLost([] { t_display->LoseHere(); });
    std::string error = StartSdlVideo();
    if (!error.empty())
        return error;
    SDL_StopTextInput(); // keys are keys here; an input method would only cost memory
    error = m_window.Open(m_options);
    if (!error.empty())
        return error;
    m_server = ConnectionOf(m_window.Raw());
    if (m_options.fullScreen)
        SDL_ShowCursor(SDL_DISABLE); // until a mouse moves: most full screens are touched
    return {};
}

void SdlDisplay::Close()
{
    m_window = SdlWindow();
    SDL_Quit();
}

bool SdlDisplay::HandleEvents()
{
    SDL_PumpEvents();
    SDL_Event event;
    bool any = false;
    while (SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) > 0) {
        Handle(event);
        any = true;
    }
    return any;
}

// The library's own wake-up is not used: it sends a message to the window over a second connection. When the window is
// gone by then, the server's complaint ends the process.
bool SdlDisplay::Wait(EventWait& wait)
{
    const short came = wait.Wait(m_server, POLLIN, m_server < 0 ? kLookEveryMs : -1);
    if ((came & (POLLHUP | POLLERR | POLLNVAL)) != 0)
        LoseHere(); // the library cannot close a window without its server
    return true;
}

void SdlDisplay::Handle(const SDL_Event& event)
{
    switch (event.type) {
    case SDL_QUIT: user::PressExitKey(); break; // the window's close button
    case SDL_WINDOWEVENT: HandleWindowEvent(event.window); break;
    case SDL_KEYDOWN:
    case SDL_KEYUP: HandleKey(event.key); break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
    case SDL_MOUSEMOTION: HandleMouse(event); break;
    case SDL_FINGERDOWN:
    case SDL_FINGERUP:
    case SDL_FINGERMOTION: HandleFinger(event.tfinger); break;
    default: break;
    }
}

void SdlDisplay::HandleWindowEvent(const SDL_WindowEvent& event)
{
    switch (event.event) {
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_SIZE_CHANGED: m_window.Redraw(); break;
    case SDL_WINDOWEVENT_FOCUS_GAINED: user::SetDisplayActive(true); break;
    case SDL_WINDOWEVENT_FOCUS_LOST: user::SetDisplayActive(false); break;
    default: break;
    }
}

void SdlDisplay::HandleKey(const SDL_KeyboardEvent& event)
{
    const KeyStroke down = event.repeat != 0 ? KeyStroke::DownAgain : KeyStroke::Down;
    StrikeMachineKey(SDL_GetKeyName(event.keysym.sym), event.type == SDL_KEYDOWN ? down : KeyStroke::Up,
                     m_options.keys);
}

void SdlDisplay::HandleMouse(const SDL_Event& event)
{
    if (event.type == SDL_MOUSEMOTION) {
        SDL_ShowCursor(SDL_ENABLE);
        m_panel.Move({ &kMouse }, m_window.Place(), event.motion.x, event.motion.y);
    } else if (event.button.button == SDL_BUTTON_LEFT) {
        if (event.type == SDL_MOUSEBUTTONDOWN)
            m_panel.Down({ &kMouse }, m_window.Place(), event.button.x, event.button.y);
        else
            m_panel.Up({ &kMouse }, m_window.Place(), event.button.x, event.button.y);
    }
}

void SdlDisplay::HandleFinger(const SDL_TouchFingerEvent& event)
{
    const SDL_Point size = m_window.Size();
    const int x = static_cast<int>(std::floor(event.x * static_cast<float>(size.x)));
    const int y = static_cast<int>(std::floor(event.y * static_cast<float>(size.y)));
    const Hand hand = { &kTouchScreen, event.fingerId };
    switch (event.type) {
    case SDL_FINGERDOWN: m_panel.Down(hand, m_window.Place(), x, y); break;
    case SDL_FINGERUP: m_panel.Up(hand, m_window.Place(), x, y); break;
    default: m_panel.Move(hand, m_window.Place(), x, y); break;
    }
}

} // namespace

std::unique_ptr<Display> MakeSdlDisplay(const DisplayOptions& options)
{
    return std::make_unique<SdlDisplay>(options);
}

} // namespace cardsong::display
