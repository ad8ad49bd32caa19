#include "gui/alert_message_window_thread.h"

#include "common/string_table.h"
#include "gui/alert_message_window_messages.h"
#include "platform/screen_size.h"

#include <utility>

namespace {

constexpr LPCWSTR kClassName = TEXT("ALERTMSGWIN");

HWND CreateAlertWindow(AlertWindow& alert)
{
    // The end of another alert may take the class away between the two calls.
    for (;;) {
        if (!RegisterAlertClass())
            return nullptr;
        const HWND window = CreateWindowExW(0, kClassName, TEXT(""), WS_POPUP, 0, 0, kScreenWidthPx, kScreenHeightPx,
                                            nullptr, nullptr, g_hInstance, &alert);
        if (window != nullptr || GetLastError() != ERROR_CANNOT_FIND_WND_CLASS)
            return window;
    }
}

// What the two threads tell each other until the window is shown. The caller's.
struct Start {
    AlertRequest request;
    const std::shared_ptr<AlertLife>& life;
    const UniqueKernelObject isDone;
    HWND window = nullptr;
};

DWORD WINAPI RunAlert(LPVOID parameter)
{
    auto& start = *static_cast<Start*>(parameter);
    AlertWindow alert(std::move(start.request), start.life);
    const HWND window = CreateAlertWindow(alert);
    const bool isShown = alert.Show(window);
    if (isShown)
        start.window = window;
    EventModify(start.isDone.Get(), EVENT_SET); // the caller goes on, and `start` is no more
    MSG message;
    while (isShown && GetMessageW(&message, nullptr, 0, 0)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}

} // namespace

bool RegisterAlertClass()
{
    WNDCLASSW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = AlertWindow::Procedure;
    windowClass.cbWndExtra = sizeof(AlertWindow*);
    windowClass.hInstance = g_hInstance;
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    windowClass.lpszClassName = kClassName;
    return RegisterClassW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

void UnregisterAlertClass()
{
    UnregisterClassW(kClassName, g_hInstance);
}

HWND ShowOnThread(AlertRequest request, const std::shared_ptr<AlertLife>& life)
{
    Start start{ std::move(request), life, UniqueKernelObject(CreateEventW(nullptr, TRUE, FALSE, nullptr)) };
    const UniqueKernelObject thread(start.isDone ? CreateThread(nullptr, 0, RunAlert, &start, 0, nullptr) : nullptr);
    if (!thread) {
        EnableWindow(start.request.disabled, TRUE);
        life->state = AlertState::Free;
        return nullptr;
    }
    WaitForSingleObject(start.isDone.Get(), INFINITE);
    return start.window;
}
