#include "platform/windows/host/end_watch.h"

#include "platform/windows/screen/window_procedures.h"

namespace cardsong::host {
namespace {

// Set while something asks the program to end; one for the process, as the console's handler is.
HANDLE EndWanted()
{
    static const HANDLE s_event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    return s_event;
}

BOOL WINAPI OnConsole(DWORD)
{
    SetEvent(EndWanted());
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
    for (bool isFirst = true; WaitForMultipleObjects(2, events, FALSE, limitMs) != WAIT_OBJECT_0; isFirst = false) {
        limitMs = INFINITE;
        if (isFirst)
            m_beforeEnd();
        screen::PressExitKey();
    }
}

} // namespace cardsong::host
