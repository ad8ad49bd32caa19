#include "platform/linux/display/event_wait.h"
#include "platform/linux/display/sdl_keys.h"
#include "platform/linux/display/sdl_video.h"
#include "platform/linux/display/sdl_window.h"
#include "platform/linux/kernel/start_trace.h"
#include "platform/linux/user/input.h"

#include <SDL.h>

#include <atomic>
#include <cmath>
#include <condition_variable>
#include <thread>
#include <unistd.h>
#include <utility>

namespace cardsong::display {
namespace {

enum class State { Opening, Open, Closed, Lost };

class SdlDisplay final : public Display {
public:
    explicit SdlDisplay(const DisplayOptions& options) : m_options(options)
    {
        // The library reads the window's class from the environment, which may change only before other threads start.
        SDL_setenv("SDL_VIDEO_X11_WMCLASS", "cardsong", 0);
        SDL_setenv("SDL_VIDEO_WAYLAND_WMCLASS", "cardsong", 0);
    }
    ~SdlDisplay() override { Stop(); }
    std::string Start() override;
    void Stop() override;
    bool IsLost() const override;
    void FrameReady() override;

private:
    void AskToRaise();
    void Run();
    std::string Open();
    void HandleEvents();
    // False when there was none.
    bool HandleWaiting();
    void Handle(const SDL_Event& event);
    // False when none waits.
    bool ShowFrame();
    void Enter(State state);
    State AwaitEndOf(State state);
    [[noreturn]] void Lose();
    void HandleWindowEvent(const SDL_WindowEvent& event);
    void HandleKey(const SDL_KeyboardEvent& event);
    void HandleDesktopKey(const SDL_KeyboardEvent& event);
    void HandleMouse(const SDL_Event& event);
    void HandleFinger(const SDL_TouchFingerEvent& event);
    void Press(int x, int y);
    void Move(int x, int y);
    void Release(int x, int y);

    const DisplayOptions m_options;
    std::thread m_thread;
    mutable std::mutex m_mutex; // guards the state
    std::condition_variable m_stateChanged;
    State m_state = State::Opening;
    std::string m_trouble; // why it could not be opened; written before the state says so
    std::atomic<bool> m_stops = false;
    std::atomic<bool> m_isToRise = false;
    EventWait m_wait;
    FrameBox m_box;

    // The display's thread only.
    SdlWindow m_window;
    Frame m_next;
    bool m_hasShown = false;
    bool m_isPressed = false;
    SDL_FingerID m_finger = 0;
    bool m_fingerIsDown = false;
};

thread_local SdlDisplay* t_display = nullptr; // whose thread this is

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
    // Frames may be finished while the window is still opening; the last of them is shown as soon as it is there.
    user::InstallPresenter([this] { FrameReady(); });
    user::InstallRaiser([this] { AskToRaise(); });
    m_thread = std::thread([this] { Run(); });
    switch (AwaitEndOf(State::Opening)) {
    case State::Open: return {};
    case State::Lost: return "the display went away";
    default: Stop(); return m_trouble;
    }
}

void SdlDisplay::Stop()
{
    if (!m_thread.joinable())
        return;
    user::InstallPresenter({});
    user::InstallRaiser({});
    m_stops = true;
    m_wait.WakeUp();
    if (AwaitEndOf(State::Open) != State::Lost) {
        m_thread.join();
        return;
    }
    m_window.Abandon();
    m_thread.detach(); // it stands still until the process ends, see Lose
}

bool SdlDisplay::IsLost() const
{
    const std::lock_guard lock(m_mutex);
    return m_state == State::Lost;
}

void SdlDisplay::FrameReady()
{
    if (m_box.Post())
        m_wait.WakeUp();
}

void SdlDisplay::AskToRaise()
{
    m_isToRise = true;
    m_wait.WakeUp();
}

// A lost thread does not touch the object afterwards: its owner may destroy it as soon as the lock is free.
void SdlDisplay::Enter(State state)
{
    const std::lock_guard lock(m_mutex);
    m_state = state;
    m_stateChanged.notify_all();
}

State SdlDisplay::AwaitEndOf(State state)
{
    std::unique_lock lock(m_mutex);
    m_stateChanged.wait(lock, [&] { return m_state != state; });
    return m_state;
}

// The library may call this within its own call to the dead server. That call must neither go on nor end the process.
// So the thread stands still while the player saves what it has to save and ends.
void SdlDisplay::Lose()
{
    user::PressExitKey();
    Enter(State::Lost);
    for (;;)
        pause();
}

std::string SdlDisplay::Open()
{
    t_display = this;
    OnXServerLost([] { t_display->Lose(); });
    std::string error = StartSdlVideo();
    if (!error.empty())
        return error;
    SDL_StopTextInput(); // keys are keys here; an input method would only cost memory
    error = m_window.Open(m_options);
    if (!error.empty())
        return error;
    m_wait.Watch(m_window.Raw());
    if (m_options.fullScreen)
        SDL_ShowCursor(SDL_DISABLE); // until a mouse moves: most full screens are touched
    return {};
}

void SdlDisplay::Run()
{
    m_trouble = Open();
    if (m_trouble.empty()) {
        Enter(State::Open);
        HandleEvents();
    }
    m_window = SdlWindow();
    SDL_Quit();
    Enter(State::Closed);
}

void SdlDisplay::HandleEvents()
{
    while (!m_stops) {
        if (m_isToRise.exchange(false))
            m_window.Raise();
        const bool handled = HandleWaiting();
        const bool shown = ShowFrame();
        // Drawing makes the library read events, too. No wait ends for them: only another look finds them.
        if (!handled && !shown && !m_wait.Wait())
            Lose();
    }
}

bool SdlDisplay::HandleWaiting()
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

bool SdlDisplay::ShowFrame()
{
    if (!m_box.Take(m_next))
        return false;
    m_window.Show(m_next);
    if (!std::exchange(m_hasShown, true))
        kernel::TraceStart("first frame");
    return true;
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
    const auto key = DeviceCodeOf(event.keysym.sym);
    if (!key)
        HandleDesktopKey(event);
    else if (event.type == SDL_KEYDOWN)
        user::KeyDown(*key);
    else
        user::KeyUp(*key);
}

// A key that the device does not have: it acts when it goes down.
void SdlDisplay::HandleDesktopKey(const SDL_KeyboardEvent& event)
{
    if (event.type != SDL_KEYDOWN)
        return;
    const DesktopKeys& keys = m_options.keys;
    const bool isHeld = event.repeat != 0;
    if (const CommandKey* const command = CommandKeyOf(event.keysym.sym, keys)) {
        if (!isHeld || command->whenHeld == WhenKeyIsHeld::ActsAgain)
            user::GiveCommand(keys.mainWindowClass, command->command);
    } else if (const TapKey* const tap = TapKeyOf(event.keysym.sym, keys)) {
        user::TapInFrontOf(keys.mainWindowClass, tap->place);
    } else if (const auto number = BottomButtonOf(event.keysym.sym); number && !isHeld) {
        user::TapBottomButton(*number);
    }
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
