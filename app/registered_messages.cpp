#include "app/registered_messages.h"

#include "common/device_messages.h"

UINT g_msgAreYouMe;
UINT g_msgUserAddSongs;
UINT g_msgMassStorage;
UINT g_msgAudioManager;
UINT g_msgStatusRequest;

namespace {

struct MessageName {
    UINT& number;
    const WCHAR* name;
};

constexpr MessageName kStartMessages[] = {
    { g_msgAreYouMe, kAreYouMeMessage },
    { g_msgUserAddSongs, TEXT("WM_USER_!-{{1FCF03ED-B487-4997-8A32-6029F108FA9F}}") },
    { g_msgMassStorage, kMassStorageMessage },
};
constexpr MessageName kWindowMessages[] = {
    { g_msgAudioManager, kAudioManagerMessage },
    { g_msgStatusRequest, kStatusRequestMessage },
};

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

void RegisterWindowMessages()
{
    for (const MessageName& message : kWindowMessages)
        Register(message);
}
