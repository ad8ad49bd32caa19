#include "app/win_main.h"

#include "app/start_up.h"
#include "common/string_table.h"

void RunMessage(HWND mainWindow, MSG& message)
{
    if (IsDialogMessageW(mainWindow, &message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPWSTR commandLine, int showCommand)
{
    const HWND window = StartUp(instance, commandLine, showCommand);
    if (window == nullptr)
        return 0;

    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0))
        RunMessage(window, message);

    FreeLibrary(g_hStringModule);
    CoUninitialize();
    return static_cast<int>(message.wParam);
}
