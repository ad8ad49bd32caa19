// The player's audio priority in the registry, which it shares with the device's audio manager: the DWORD "Priority" of
// HKEY_LOCAL_MACHINE\TAVO\AudioManagement. What a priority means, its users say. It knows no window.
#pragma once

#include "common/registry_key.h"

// Makes the key when it is missing. None when it can be neither opened nor made.
UniqueKey OpenAudioManagementKey();

// One number of the key. The result is the registry's; `value` stays when the reading fails. No key is an invalid
// handle.
LSTATUS QueryAudioValue(const UniqueKey& key, LPCWSTR name, DWORD& value);
LSTATUS SetAudioValue(const UniqueKey& key, LPCWSTR name, DWORD value);

// Each through a key of its own. Without a key the reading fails and nothing is written.
LSTATUS ReadAudioPriority(DWORD& priority);
void WriteAudioPriority(DWORD priority);

extern DWORD g_audioPriority; // what the registry told when the window was made; 0: it told nothing

// Writes g_audioPriority back, but for the values from 5 on, which are the audio manager's own.
void KeepAudioPriority();
