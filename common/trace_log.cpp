#include "common/trace_log.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdarg>
#include <iterator>

BYTE g_logChecked = 0;
BYTE g_logEnabled = 0;

namespace {

struct ModuleName {
    DWORD id;
    LPCWSTR name;
};

constexpr std::array<ModuleName, 19> kModuleNames = { {
    { 1, TEXT("Shell") },     { 2, TEXT("Menu") },     { 3, TEXT("Settings") },     { 4, TEXT("Navigation") },
    { 5, TEXT("Map") },       { 6, TEXT("Position") }, { 7, TEXT("Phone") },        { 8, TEXT("Contacts") },
    { 9, TEXT("Bluetooth") }, { 10, TEXT("Radio") },   { 11, TEXT("Transmitter") }, { 12, TEXT("Storage") },
    { 13, TEXT("Update") },   { 32, TEXT("Video") },   { 33, TEXT("Music") },       { 34, TEXT("Photo") },
    { 35, TEXT("Audio") },    { 36, TEXT("Text") },    { 37, TEXT("Power") },
} };

constexpr std::size_t kMessageUnits = 256; // with the terminating zero

} // namespace

int IsTraceLogSwitchedOn()
{
    HKEY key = nullptr;
    DWORD disposition = 0;
    // KEY_READ beside KEY_WRITE: the device reads through a key opened for writing, desktop systems do not.
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, TEXT("\\TAVO\\TAVO_BACKDOOR"), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_READ | KEY_WRITE, nullptr, &key, &disposition) != ERROR_SUCCESS)
        return 0;
    DWORD active = 0;
    DWORD sizeBytes = sizeof(active);
    const LSTATUS result =
        RegQueryValueExW(key, TEXT("Activate"), nullptr, nullptr, reinterpret_cast<LPBYTE>(&active), &sizeBytes);
    if (result == ERROR_FILE_NOT_FOUND)
        RegSetValueExW(key, TEXT("Activate"), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&active), sizeof(active));
    RegCloseKey(key);
    return result == ERROR_SUCCESS && active != 0 ? 1 : 0;
}

void TraceLog(DWORD moduleId, LPCWSTR format, ...)
{
    // No lock, and no order either: each thread that finds the switch unread reads it, with the same result.
    const std::atomic_ref checked(g_logChecked);
    const std::atomic_ref enabled(g_logEnabled);
    if (checked == 0) {
        enabled = IsTraceLogSwitchedOn() == 1 ? 1 : 0;
        checked = 1;
    }
    if (enabled != 1 || checked != 1)
        return;
    WCHAR message[kMessageUnits] = {};
    va_list arguments;
    va_start(arguments, format);
    _vsnwprintf(message, kMessageUnits - 1, format, arguments);
    va_end(arguments);
    message[kMessageUnits - 1] = 0; // a message that was cut has no zero of its own

    const auto* found = std::ranges::find(kModuleNames, moduleId, &ModuleName::id);
    if (found != kModuleNames.end())
        NKDbgPrintfW(TEXT("[AP][%s][FunName]%s\n"), found->name, message);
    else
        NKDbgPrintfW(TEXT("[AP Log][%d]%s"), moduleId, message);
}
