#include "app/audio_manager.h"

#include "app/registered_messages.h"

void TellAudioManager(WPARAM request)
{
    PostMessageW(HWND_BROADCAST, g_msgAudioManager, request, 0);
}
