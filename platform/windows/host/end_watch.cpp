#include "platform/windows/host/end_watch.h"

#include "platform/windows/screen/window_procedures.h"

#include <cstdlib>

namespace cardsong::host {
namespace {

// A player that leaves so many exit keys without an answer hangs. It is ended, so that its user need not wait.
constexpr int kPatience = 3;
constexpr int kGaveUpStatus = 130;

// Set while something asks the program to end. One for the process, as the console has one handler for it.
HANDLE EndWanted()
{
    static const HANDLE s_event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    return s_event;
}

BOOL WINAPI OnConsole(DWORD event)
{
    SetEvent(EndWanted());
    // After a break the program goes on until the player has ended. After any other event the system ends it as soon as
    // this returns, or when it has waited long enough.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

} // namespace

EndWatch::EndWatch() : m_stop(CreateEventW(nullptr, TRUE, FALSE, nullptr))
{
    SetConsoleCtrlHandler(OnConsole, TRUE);
}

EndWatch::~EndWatch()
{
    Stop();
    SetConsoleCtrlHandler(OnConsole, FALSE);
    CloseHandle(m_stop);
}

void EndWatch::Start(double seconds, std::function<void()> beforeEnd)
{
    m_beforeEnd = std::move(beforeEnd);
    m_thread = std::thread([this, seconds] { Watch(seconds); });
}

void EndWatch::Stop()
{
    SetEvent(m_stop);
    if (m_thread.joinable())
        m_thread.join();
}

void EndWatch::Watch(double seconds)
{
    const HANDLE events[] = { m_stop, EndWanted() };
    DWORD limitMs = seconds > 0 ? static_cast<DWORD>(seconds * 1000.0) : INFINITE;
    for (int asked = 0; WaitForMultipleObjects(2, events, FALSE, limitMs) != WAIT_OBJECT_0; ++asked) {
        limitMs = INFINITE;
        if (asked == kPatience)
            std::_Exit(kGaveUpStatus);
        if (asked == 0)
            m_beforeEnd();
        screen::PressExitKey();
    }
}

} // namespace cardsong::host
