// The functions of the API that answer differently on a device than on a desktop: files and modules by device path,
// sounds, stream drivers, the registry's machine keys, programs, the language. platform/ce.h puts them in the place of
// the system's own functions of the same names; arguments and results are theirs.
#pragma once

#include <windows.h>

#include <cstdio>

namespace cardsong::device {

// ---- files ----
HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flagsAndAttributes, HANDLE templateFile);
BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID input, DWORD inputBytes, LPVOID output, DWORD outputBytes,
                     LPDWORD returnedBytes, OVERLAPPED* overlapped);
HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data);
BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data);
BOOL FindClose(HANDLE find);
DWORD GetFileAttributesW(LPCWSTR name);
BOOL GetFileAttributesExW(LPCWSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data);
BOOL DeleteFileW(LPCWSTR name);
BOOL CreateDirectoryW(LPCWSTR name, SECURITY_ATTRIBUTES* security);
// The device has CSIDL_PERSONAL alone: \My Documents of its own tree.
BOOL SHGetSpecialFolderPathW(HWND owner, LPWSTR path, int folder, BOOL create);
std::FILE* _wfopen(const wchar_t* name, const wchar_t* mode);

// ---- programs, modules, language ----
BOOL CreateProcessW(LPCWSTR image, LPWSTR commandLine, SECURITY_ATTRIBUTES* process, SECURITY_ATTRIBUTES* thread,
                    BOOL inherit, DWORD flags, LPVOID environment, LPCWSTR directory, STARTUPINFOW* startup,
                    PROCESS_INFORMATION* information);
HMODULE LoadLibraryExW(LPCWSTR name, HANDLE file, DWORD flags);
LANGID GetUserDefaultUILanguage();

// ---- registry ----
LSTATUS RegOpenKeyExW(HKEY parent, LPCWSTR path, DWORD options, REGSAM access, HKEY* key);
LSTATUS RegCreateKeyExW(HKEY parent, LPCWSTR path, DWORD reserved, LPWSTR className, DWORD options, REGSAM access,
                        SECURITY_ATTRIBUTES* security, HKEY* key, LPDWORD disposition);
LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD sizeBytes);
LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD sizeBytes);
LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameUnits, LPDWORD reserved, LPWSTR className,
                      LPDWORD classUnits, FILETIME* lastWrite);
LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameUnits, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD sizeBytes);

// ---- sounds ----
BOOL PlaySoundW(LPCWSTR name, HMODULE module, DWORD flags);

} // namespace cardsong::device
