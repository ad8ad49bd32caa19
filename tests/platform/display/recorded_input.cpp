#include "tests/platform/display/recorded_input.h"

#include "platform/ce.h"
#include "platform/linux/user/input.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

std::mutex g_mutex;
std::condition_variable g_changed;
std::vector<std::string> g_input;
std::function<void()> g_presenter;
std::function<void()> g_raiser;

bool Call(const std::function<void()>& installed)
{
    std::function<void()> function;
    {
        const std::lock_guard lock(g_mutex);
        function = installed;
    }
    if (function)
        function();
    return function != nullptr;
}

void Record(std::string text)
{
    const std::lock_guard lock(g_mutex);
    g_input.push_back(std::move(text));
    g_changed.notify_all();
}

std::string Place(POINT at)
{
    return std::to_string(at.x) + "," + std::to_string(at.y);
}

} // namespace

namespace cardsong::test {

void ResetRecordedInput()
{
    const std::lock_guard lock(g_mutex);
    g_input.clear();
    g_presenter = nullptr;
    g_raiser = nullptr;
}

std::vector<std::string> RecordedInput()
{
    const std::lock_guard lock(g_mutex);
    return g_input;
}

std::vector<std::string> WaitForInput(std::size_t count)
{
    constexpr auto kGiveUp = std::chrono::seconds(20); // only a failing test waits so long
    std::unique_lock lock(g_mutex);
    g_changed.wait_for(lock, kGiveUp, [count] { return g_input.size() >= count; });
    return g_input;
}

bool PresentFrame()
{
    return Call(g_presenter);
}

bool AskToRaise()
{
    return Call(g_raiser);
}

} // namespace cardsong::test

namespace cardsong::user {

void PointerDown(POINT at)
{
    Record("down " + Place(at));
}
void PointerMove(POINT at)
{
    Record("move " + Place(at));
}
void PointerUp(POINT at)
{
    Record("up " + Place(at));
}
void CancelPointer()
{
    Record("cancel");
}
void KeyDown(UINT key)
{
    Record("key+ " + std::to_string(key));
}
void KeyUp(UINT key)
{
    Record("key- " + std::to_string(key));
}
void GiveCommand(LPCWSTR mainWindowClass, WORD command)
{
    const WString name(mainWindowClass);
    Record("command " + std::to_string(command) + " to " + std::string(name.begin(), name.end()));
}
void TapInFrontOf(LPCWSTR mainWindowClass, POINT at)
{
    const WString name(mainWindowClass);
    Record("tap " + Place(at) + " in front of " + std::string(name.begin(), name.end()));
}
void TapBottomButton(int number)
{
    Record("bottom button " + std::to_string(number));
}
void PressExitKey()
{
    Record("exit key");
}
void SetDisplayActive(bool active)
{
    Record(active ? "active" : "inactive");
}

void InstallPresenter(std::function<void()> presenter)
{
    const std::lock_guard lock(g_mutex);
    g_presenter = std::move(presenter);
}

void InstallRaiser(std::function<void()> raiser)
{
    const std::lock_guard lock(g_mutex);
    g_raiser = std::move(raiser);
}

void ResetWindows() {}

} // namespace cardsong::user
