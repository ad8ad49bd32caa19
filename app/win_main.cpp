#include "app/win_main.h"

#include "app/command_ids.h"
#include "app/launch_options.h"
#include "app/registered_messages.h"
#include "app/start_up.h"
#include "common/string_table.h"
#include "common/trace_log.h"
#include "playback/media_graph.h"

void RunMessage(HWND mainWindow, MSG& message)
{
    if (IsDialogMessageW(mainWindow, &message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPWSTR commandLine, int showCommand)
{
    TraceLog(kLogModule, TEXT("Run!\r\n"));
    g_hInstance = instance;
    g_launchOptions = ReadLaunchOptions(commandLine);
    RegisterStartMessages();
    if (HandOverToRunningPlayer())
        return 0;
    MediaGraph::WarmUp();
    g_hStringModule = LoadStringModule();
    const HWND window = InitInstance(instance, showCommand);
    if (window == nullptr)
        return 0;

    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0))
        RunMessage(window, message);

    FreeLibrary(g_hStringModule);
    CoUninitialize();
    return static_cast<int>(message.wParam);
}
