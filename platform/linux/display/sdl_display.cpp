#include "platform/linux/display/sdl_keys.h"
#include "platform/linux/display/sdl_window.h"
#include "platform/linux/kernel/start_trace.h"
#include "platform/linux/user/input.h"

#include <SDL.h>

#include <cmath>
#include <future>
#include <thread>
#include <utility>

namespace cardsong::display {
namespace {

// What the other threads tell the display's thread, as codes of one user event.
enum class Wake : Sint32 { Frame, Stop };

class SdlDisplay final : public Display {
public:
    explicit SdlDisplay(const DisplayOptions& options) : m_options(options)
    {
        // The window's class is read from the environment, which may change only before other threads look at it.
        SDL_setenv("SDL_VIDEO_X11_WMCLASS", "cardsong", 0);
        SDL_setenv("SDL_VIDEO_WAYLAND_WMCLASS", "cardsong", 0);
    }
    ~SdlDisplay() override { Stop(); }
    std::string Start() override;
    void Stop() override;
    void FrameReady() override;

private:
    void Run(std::promise<std::string>& opened);
    std::string Open();
    void HandleEvents();
    // False ends the display.
    bool Handle(const SDL_Event& event);
    void ShowFrame();
    void HandleWindowEvent(const SDL_WindowEvent& event);
    void HandleKey(const SDL_KeyboardEvent& event);
    void HandleMouse(const SDL_Event& event);
    void HandleFinger(const SDL_TouchFingerEvent& event);
    void Press(int x, int y);
    void Move(int x, int y);
    void Release(int x, int y);
    void WakeUp(Wake reason);

    const DisplayOptions m_options;
    std::thread m_thread;
    std::mutex m_mutex; // guards m_isOpen against a frame that is finished while the display closes
    bool m_isOpen = false;
    Uint32 m_wakeEvent = 0;
    FrameBox m_box;

    // The display's thread only.
    SdlWindow m_window;
    Frame m_next;
    bool m_hasShown = false;
    bool m_isPressed = false;
    SDL_FingerID m_finger = 0;
    bool m_fingerIsDown = false;
};

// No OpenGL (100 MB), no events made twice from touch and mouse, no screen kept awake by a player in a pocket.
void SetHints()
{
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");
    SDL_SetHint(SDL_HINT_MOUSE_TOUCH_EVENTS, "0");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // the host ends the program
    SDL_SetHint(SDL_HINT_APP_NAME, "cardsong");
}

std::string SdlDisplay::Start()
{
    SetHints();
    std::promise<std::string> opened;
    auto result = opened.get_future();
    // Frames may be finished while the window is still opening; the last of them is shown as soon as it is there.
    user::InstallPresenter([this] { FrameReady(); });
    m_thread = std::thread([this, &opened] { Run(opened); });
    std::string error = result.get();
    if (!error.empty()) {
        user::InstallPresenter({});
        m_thread.join();
    }
    return error;
}

void SdlDisplay::Stop()
{
    if (!m_thread.joinable())
        return;
    user::InstallPresenter({});
    WakeUp(Wake::Stop);
    m_thread.join();
}

void SdlDisplay::FrameReady()
{
    if (m_box.Post())
        WakeUp(Wake::Frame);
}

void SdlDisplay::WakeUp(Wake reason)
{
    const std::lock_guard lock(m_mutex);
    if (!m_isOpen)
        return;
    SDL_Event event{};
    event.type = m_wakeEvent;
    event.user.code = static_cast<Sint32>(reason);
    SDL_PushEvent(&event);
}

std::string SdlDisplay::Open()
{
    if (SDL_Init(SDL_INIT_VIDEO) != 0)
        return SDL_GetError();
    SDL_StopTextInput(); // keys are keys here; an input method would only cost memory
    m_wakeEvent = SDL_RegisterEvents(1);
    std::string error = m_window.Open(m_options);
    if (m_options.fullScreen)
        SDL_ShowCursor(SDL_DISABLE); // until a mouse moves: most full screens are touched
    return error;
}

void SdlDisplay::Run(std::promise<std::string>& opened)
{
    const std::string error = Open();
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = error.empty();
    }
    opened.set_value(error);
    if (error.empty()) {
        ShowFrame();
        HandleEvents();
    }
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = false;
    }
    m_window = SdlWindow();
    SDL_Quit();
}

void SdlDisplay::HandleEvents()
{
    SDL_Event event;
    while (SDL_WaitEvent(&event) != 0) {
        if (!Handle(event))
            return;
    }
}

bool SdlDisplay::Handle(const SDL_Event& event)
{
    if (event.type == m_wakeEvent) {
        if (event.user.code == static_cast<Sint32>(Wake::Stop))
            return false;
        ShowFrame();
        return true;
    }
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
    return true;
}

void SdlDisplay::ShowFrame()
{
    if (!m_box.Take(m_next))
        return;
    m_window.Show(m_next);
    if (!std::exchange(m_hasShown, true))
        kernel::TraceStart("first frame");
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
    const auto key = DeviceKey(event.keysym.sym);
    if (!key)
        return;
    if (event.type == SDL_KEYDOWN)
        user::KeyDown(*key);
    else
        user::KeyUp(*key);
}

void SdlDisplay::HandleMouse(const SDL_Event& event)
{
    if (event.type == SDL_MOUSEMOTION) {
        SDL_ShowCursor(SDL_ENABLE);
        Move(event.motion.x, event.motion.y);
    } else if (event.button.button == SDL_BUTTON_LEFT) {
        if (event.type == SDL_MOUSEBUTTONDOWN)
            Press(event.button.x, event.button.y);
        else
            Release(event.button.x, event.button.y);
    }
}

// The device's panel feels one finger: the first one counts until it leaves.
void SdlDisplay::HandleFinger(const SDL_TouchFingerEvent& event)
{
    const SDL_Point size = m_window.Size();
    const int x = static_cast<int>(std::floor(event.x * static_cast<float>(size.x)));
    const int y = static_cast<int>(std::floor(event.y * static_cast<float>(size.y)));
    if (event.type == SDL_FINGERDOWN && !m_fingerIsDown) {
        m_finger = event.fingerId;
        m_fingerIsDown = true;
        Press(x, y);
    } else if (m_fingerIsDown && event.fingerId == m_finger) {
        if (event.type == SDL_FINGERUP) {
            m_fingerIsDown = false;
            Release(x, y);
        } else {
            Move(x, y);
        }
    }
}

void SdlDisplay::Press(int x, int y)
{
    const auto point = ToScreenPoint(m_window.Place(), x, y);
    if (!point || m_isPressed)
        return;
    m_isPressed = true;
    user::PointerDown(*point);
}

void SdlDisplay::Move(int x, int y)
{
    if (m_isPressed)
        user::PointerMove(ToNearestScreenPoint(m_window.Place(), x, y));
}

void SdlDisplay::Release(int x, int y)
{
    if (std::exchange(m_isPressed, false))
        user::PointerUp(ToNearestScreenPoint(m_window.Place(), x, y));
}

} // namespace

std::unique_ptr<Display> MakeSdlDisplay(const DisplayOptions& options)
{
    return std::make_unique<SdlDisplay>(options);
}

} // namespace cardsong::display
