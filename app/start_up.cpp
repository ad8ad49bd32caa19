#include "app/start_up.h"

#include "app/main_window.h"
#include "app/no_card_notice.h"
#include "app/registered_messages.h"
#include "app/storage_card.h"

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

bool HandOverToRunningPlayer()
{
    if (FindWindowW(kMainWindowClass, nullptr) == nullptr)
        return false;
    PostMessageW(HWND_BROADCAST, g_msgAreYouMe, 0, 0);
    return true;
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
