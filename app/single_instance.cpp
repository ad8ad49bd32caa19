#include "app/single_instance.h"

#include "app/main_window.h"
#include "app/registered_messages.h"

bool HandOverToRunningPlayer()
{
    if (FindWindowW(kMainWindowClass, nullptr) == nullptr)
        return false;
    PostMessageW(HWND_BROADCAST, g_msgAreYouMe, 0, 0);
    return true;
}
