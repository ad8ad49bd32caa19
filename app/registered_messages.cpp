#include "app/registered_messages.h"

#include "playback/media_graph.h"

UINT g_msgAreYouMe;
UINT g_msgUserAddSongs;
UINT g_msgMassStorage;
UINT g_msgAudioManager;

namespace {

struct MessageName {
    UINT& number;
    const WCHAR* name;
};

constexpr MessageName kStartMessages[] = {
    { g_msgAreYouMe, TEXT("WM_ARE_YOU_ME-{0F53DE7F-024B-4003-8DE1-545F577398AB}") },
    { g_msgUserAddSongs, TEXT("WM_USER_!-{{1FCF03ED-B487-4997-8A32-6029F108FA9F}}") },
    { g_msgMassStorage, TEXT("TAVO_MASS_STORAGE_NOTIFICATION") },
};
constexpr MessageName kAudioManagerMessage = { g_msgAudioManager, kAudioManagerMessageName };

void Register(const MessageName& message)
{
    message.number = RegisterWindowMessageW(message.name);
}

} // namespace

void RegisterStartMessages()
{
    for (const MessageName& message : kStartMessages)
        Register(message);
}

void RegisterAudioManagerMessage()
{
    Register(kAudioManagerMessage);
}
