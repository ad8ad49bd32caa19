#include "app/audio_manager.h"

#include "app/registered_messages.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<WPARAM> g_onTheirWay; // a change of songs sends one, and takes it before the next

} // namespace

void TellAudioManager(WPARAM request)
{
    if (PostMessageW(HWND_BROADCAST, g_msgAudioManager, request, 0))
        g_onTheirWay.push_back(request);
}

bool IsOwnNotice(WPARAM request)
{
    const auto found = std::ranges::find(g_onTheirWay, request);
    if (found == g_onTheirWay.end())
        return false;
    g_onTheirWay.erase(found);
    return true;
}

void ForgetOwnNotices()
{
    g_onTheirWay.clear();
}
