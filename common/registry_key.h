// An open key of the registry that closes itself, and the way in which every setting of the player gets one.
#pragma once

#include "common/unique_handle.h"

// Of RegOpenKeyExW and RegCreateKeyExW.
struct KeyTraits : NullWhenNone<HKEY> {
    static void Close(HKEY key) { RegCloseKey(key); }
};
using UniqueKey = UniqueHandle<KeyTraits>;

// Opens a key below HKEY_LOCAL_MACHINE for reading and writing. None when it is missing.
UniqueKey OpenExistingKey(LPCWSTR path);

// Opens a key below HKEY_LOCAL_MACHINE for reading and writing; one that is missing is made first. None when it can be
// neither opened nor made.
UniqueKey OpenOrCreateKey(LPCWSTR path);
