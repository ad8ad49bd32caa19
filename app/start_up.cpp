#include "app/start_up.h"

#include "app/command_ids.h"
#include "app/launch_options.h"
#include "app/main_window.h"
#include "app/no_card_notice.h"
#include "app/registered_messages.h"
#include "app/single_instance.h"
#include "app/storage_card.h"
#include "common/string_table.h"
#include "common/trace_log.h"
#include "playback/media_graph.h"

namespace {

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
        if (g_launchOptions.playAtOnce)
            PostMessageW(window, WM_COMMAND, kCommandPlay, 0);
    }
    return window;
}

HWND StartUp(HINSTANCE instance, LPCWSTR commandLine, int showCommand)
{
    TraceLog(kLogModule, TEXT("Run!\r\n"));
    g_hInstance = instance;
    g_launchOptions = ReadLaunchOptions(commandLine);
    RegisterStartMessages();
    if (HandOverToRunningPlayer())
        return nullptr;
    MediaGraph::WarmUp();
    g_hStringModule = LoadStringModule();
    return InitInstance(instance, showCommand);
}
