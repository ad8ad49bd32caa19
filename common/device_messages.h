// How programs of the device find and call each other: the player's window class and the names of registered messages.
#pragma once

#include "platform/ce.h"

constexpr const WCHAR* kPlayerWindowClass = TEXT("AUDIOPLAYER");

// A second start of the player asks the first one to come to the front.
constexpr const WCHAR* kAreYouMeMessage = TEXT("WM_ARE_YOU_ME-{0F53DE7F-024B-4003-8DE1-545F577398AB}");
// The card goes to a computer.
constexpr const WCHAR* kMassStorageMessage = TEXT("TAVO_MASS_STORAGE_NOTIFICATION");
// The state of a user of the device's sound has changed: the high word of wParam.
constexpr const WCHAR* kAudioManagerMessage = TEXT("TAVO_AUDIOMGR_UPDATESTATE_IND");
// The settings of the lyrics in the registry have changed.
constexpr const WCHAR* kLyricsSettingMessage = TEXT("Lyrics Setting Change");
// Asks the player what it does; wParam: a number of the asker's choice, not 0. See common/player_status.h.
constexpr const WCHAR* kStatusRequestMessage = TEXT("CARDSONG_STATUS_REQUEST");
