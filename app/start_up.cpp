#include "app/start_up.h"

#include "app/command_ids.h"
#include "app/main_window.h"
#include "app/no_card_notice.h"
#include "common/file_search.h"

namespace {

constexpr DWORD kQueryDeviceAccess = 1;
// Asks the card host whether its card can be used: device type 0x9C40, function 0x802, buffered, any access.
constexpr DWORD kCardHostQuery = 0x9C402008;

HANDLE OpenDriver(const WCHAR* name)
{
    return CreateFileW(name, kQueryDeviceAccess, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

HWND CreateMainWindow(HINSTANCE instance)
{
    const HRSRC resource = FindResourceW(instance, kMainWindowClass, RT_DIALOG);
    if (resource == nullptr)
        return nullptr;
    const HGLOBAL loaded = LoadResource(instance, resource);
    if (loaded == nullptr)
        return nullptr;
    const auto dialogTemplate = static_cast<LPCDLGTEMPLATEW>(LockResource(loaded));
    return CreateDialogIndirectParamW(instance, dialogTemplate, nullptr, nullptr, 0);
}

} // namespace

int IsStorageCardPresent()
{
    const HANDLE slot = OpenDriver(TEXT("DSK3:"));
    const HANDLE cardHost = OpenDriver(TEXT("SDH1:"));
    // On the two roads that find no usable card the program is about to end, and the system closes what is open.
    if (slot == INVALID_HANDLE_VALUE || cardHost == INVALID_HANDLE_VALUE)
        return 0;
    DWORD returnedBytes = 0;
    if (!DeviceIoControl(cardHost, kCardHostQuery, nullptr, 0, nullptr, 0, &returnedBytes, nullptr))
        return 0;
    CloseHandle(slot);
    CloseHandle(cardHost);
    return IsPathThere(TEXT("SDMMC\\")) ? 1 : 0;
}

HWND InitInstance(HINSTANCE instance, int showCommand)
{
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    if (!IsStorageCardPresent()) {
        TellThatNoCardIsThere();
        return nullptr;
    }
    if (!RegisterMainWindowClass(instance))
        return nullptr;
    const HWND window = CreateMainWindow(instance);
    ShowWindow(window, showCommand);
    if (window != nullptr) {
        ShowWindow(window, showCommand);
        UpdateWindow(window);
    }
    return window;
}

void RunMessage(HWND mainWindow, MSG& message)
{
    if (IsDialogMessageW(mainWindow, &message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}
