#include "app/audio_priority.h"

namespace {

constexpr LPCWSTR kPriority = TEXT("Priority");
constexpr DWORD kKeptBelow = 5;

} // namespace

DWORD g_audioPriority;

UniqueKey OpenAudioManagementKey()
{
    return OpenOrCreateKey(TEXT("\\TAVO\\AudioManagement"));
}

LSTATUS QueryAudioValue(const UniqueKey& key, LPCWSTR name, DWORD& value)
{
    DWORD read = value;
    DWORD type = REG_DWORD;
    DWORD sizeBytes = sizeof read;
    const LSTATUS result =
        RegQueryValueExW(key.Get(), name, nullptr, &type, reinterpret_cast<LPBYTE>(&read), &sizeBytes);
    if (result == ERROR_SUCCESS)
        value = read;
    return result;
}

LSTATUS SetAudioValue(const UniqueKey& key, LPCWSTR name, DWORD value)
{
    return RegSetValueExW(key.Get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
}

LSTATUS ReadAudioPriority(DWORD& priority)
{
    return QueryAudioValue(OpenAudioManagementKey(), kPriority, priority);
}

void WriteAudioPriority(DWORD priority)
{
    SetAudioValue(OpenAudioManagementKey(), kPriority, priority);
}

void KeepAudioPriority()
{
    if (g_audioPriority < kKeptBelow)
        WriteAudioPriority(g_audioPriority);
}
