#include "app/command_ids.h"
#include "app/instance_messages.h"
#include "app/launch_options.h"
#include "app/main_window.h"
#include "app/start_up.h"
#include "common/string_table.h"
#include "common/trace_log.h"
#include "platform/ce.h"
#include "playback/media_graph.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPWSTR commandLine, int showCommand)
{
    TraceLog(kLogModule, TEXT("Run!\r\n"));
    g_hInstance = instance;
    g_launchOptions = ReadLaunchOptions(commandLine);
    RegisterInstanceMessages();
    if (FindWindowW(kMainWindowClass, nullptr) != nullptr) {
        PostMessageW(HWND_BROADCAST, g_msgAreYouMe, 0, 0);
        return 0;
    }
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
