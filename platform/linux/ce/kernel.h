// Kernel side of the API: files, find, devices, processes, threads, events, clock, registry, resources, text, language,
// debug output. Signatures, constants and results are those of the API; each function has its conformance test.
#pragma once

#include "platform/linux/ce/types.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

// ---- errors ----
constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_INVALID_FUNCTION = 1;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_BAD_FORMAT = 11;
constexpr DWORD ERROR_NO_MORE_FILES = 18;
constexpr DWORD ERROR_SHARING_VIOLATION = 32;
constexpr DWORD ERROR_FILE_EXISTS = 80;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_DISK_FULL = 112;
constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
constexpr DWORD ERROR_INVALID_NAME = 123;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;
constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;
constexpr DWORD ERROR_MORE_DATA = 234;
constexpr DWORD ERROR_NO_MORE_ITEMS = 259;
constexpr DWORD ERROR_FILE_INVALID = 1006;
constexpr DWORD ERROR_NO_UNICODE_TRANSLATION = 1113;
constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;
constexpr DWORD ERROR_TLW_WITH_WSCHILD = 1406;
constexpr DWORD ERROR_CANNOT_FIND_WND_CLASS = 1407;
constexpr DWORD ERROR_CLASS_ALREADY_EXISTS = 1410;
constexpr DWORD ERROR_CLASS_DOES_NOT_EXIST = 1411;
constexpr DWORD ERROR_CLASS_HAS_WINDOWS = 1412;
constexpr DWORD ERROR_INVALID_INDEX = 1413;
constexpr DWORD ERROR_RESOURCE_DATA_NOT_FOUND = 1812;
constexpr DWORD ERROR_RESOURCE_TYPE_NOT_FOUND = 1813;
constexpr DWORD ERROR_RESOURCE_NAME_NOT_FOUND = 1814;
constexpr DWORD ERROR_RESOURCE_LANG_NOT_FOUND = 1815;

DWORD GetLastError();
void SetLastError(DWORD error);

// ---- files ----
constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD GENERIC_WRITE = 0x40000000;
constexpr DWORD FILE_SHARE_READ = 1;
constexpr DWORD FILE_SHARE_WRITE = 2;
constexpr DWORD CREATE_NEW = 1;
constexpr DWORD CREATE_ALWAYS = 2;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD OPEN_ALWAYS = 4;
constexpr DWORD TRUNCATE_EXISTING = 5;
constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01;
constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x02;
constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x04;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
constexpr DWORD INVALID_FILE_SIZE = 0xFFFFFFFF;
constexpr DWORD INVALID_SET_FILE_POINTER = 0xFFFFFFFF;
constexpr DWORD FILE_BEGIN = 0;
constexpr DWORD FILE_CURRENT = 1;
constexpr DWORD FILE_END = 2;

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
struct WIN32_FIND_DATAW {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    WCHAR cFileName[MAX_PATH];
    WCHAR cAlternateFileName[14];
};
struct WIN32_FILE_ATTRIBUTE_DATA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
};
enum GET_FILEEX_INFO_LEVELS { GetFileExInfoStandard };
struct SECURITY_ATTRIBUTES;
struct OVERLAPPED;

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flagsAndAttributes, HANDLE templateFile);
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD sizeBytes, LPDWORD readBytes, OVERLAPPED* overlapped);
BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD sizeBytes, LPDWORD writtenBytes, OVERLAPPED* overlapped);
DWORD SetFilePointer(HANDLE file, LONG distance, LONG* distanceHigh, DWORD method);
DWORD GetFileSize(HANDLE file, LPDWORD sizeHigh);
BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID input, DWORD inputBytes, LPVOID output, DWORD outputBytes,
                     LPDWORD returnedBytes, OVERLAPPED* overlapped);
BOOL FlushFileBuffers(HANDLE file); // to the card or disk itself; needs write access
BOOL CloseHandle(HANDLE object);
HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data);
BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data);
BOOL FindClose(HANDLE find);
DWORD GetFileAttributesW(LPCWSTR name);
BOOL GetFileAttributesExW(LPCWSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data);
BOOL DeleteFileW(LPCWSTR name);
BOOL CreateDirectoryW(LPCWSTR name, SECURITY_ATTRIBUTES* security);
// Puts the file `source` in the place of the file `target`, which need not be there. Whatever happens meanwhile, power
// gone included, `target` is the whole old file or the whole new one. Both lie in one folder.
BOOL DeleteAndRenameFile(LPCWSTR target, LPCWSTR source);
// Our helper: which folder it is that a path leads to, whatever links lie on the way. False when there is none.
struct FolderIdentity {
    ULONGLONG volume;
    ULONGLONG index;
    bool operator==(const FolderIdentity&) const = default;
};
BOOL GetFolderIdentity(LPCWSTR path, FolderIdentity* identity);
constexpr int CSIDL_PERSONAL = 5;
// The path of a folder by its meaning; `path` has MAX_PATH units. The device has CSIDL_PERSONAL alone, the user's
// documents; `create` makes it when it is missing. FALSE and an empty path when there is none.
BOOL SHGetSpecialFolderPathW(HWND owner, LPWSTR path, int folder, BOOL create);
// C runtime: opens a file of the device's tree. `mode` as for fopen.
std::FILE* _wfopen(const WCHAR* name, const WCHAR* mode);

// ---- clock, threads, events ----
constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_TIMEOUT = 258;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;
constexpr DWORD EVENT_PULSE = 1;
constexpr DWORD EVENT_RESET = 2;
constexpr DWORD EVENT_SET = 3;

using LPTHREAD_START_ROUTINE = DWORD(WINAPI*)(LPVOID);

DWORD GetTickCount();
void Sleep(DWORD milliseconds);
DWORD Random();
HANDLE CreateThread(SECURITY_ATTRIBUTES* security, std::size_t stackBytes, LPTHREAD_START_ROUTINE start,
                    LPVOID argument, DWORD flags, LPDWORD threadId);
DWORD GetCurrentThreadId();
HANDLE CreateEventW(SECURITY_ATTRIBUTES* security, BOOL manualReset, BOOL initiallySet, LPCWSTR name);
BOOL EventModify(HANDLE event, DWORD action);
DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds);

// ---- processes ----
struct STARTUPINFOW;
struct PROCESS_INFORMATION {
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};
constexpr DWORD CREATE_NEW_CONSOLE = 16;
BOOL CreateProcessW(LPCWSTR image, LPWSTR commandLine, SECURITY_ATTRIBUTES* process, SECURITY_ATTRIBUTES* thread,
                    BOOL inherit, DWORD flags, LPVOID environment, LPCWSTR directory, STARTUPINFOW* startup,
                    PROCESS_INFORMATION* information);

// ---- registry ----
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000002U));
constexpr DWORD REG_SZ = 1;
constexpr DWORD REG_BINARY = 3;
constexpr DWORD REG_DWORD = 4;
constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
constexpr DWORD REG_CREATED_NEW_KEY = 1;
constexpr DWORD REG_OPENED_EXISTING_KEY = 2;
constexpr DWORD KEY_READ = 0x20019;
constexpr DWORD KEY_WRITE = 0x20006;
constexpr DWORD KEY_ALL_ACCESS = 0xF003F;
using REGSAM = DWORD;

LSTATUS RegOpenKeyExW(HKEY parent, LPCWSTR path, DWORD options, REGSAM access, HKEY* key);
LSTATUS RegCreateKeyExW(HKEY parent, LPCWSTR path, DWORD reserved, LPWSTR className, DWORD options, REGSAM access,
                        SECURITY_ATTRIBUTES* security, HKEY* key, LPDWORD disposition);
LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD sizeBytes);
LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD sizeBytes);
LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameUnits, LPDWORD reserved, LPWSTR className,
                      LPDWORD classUnits, FILETIME* lastWrite);
LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameUnits, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD sizeBytes);
LSTATUS RegCloseKey(HKEY key);

// ---- modules, resources, strings ----
constexpr DWORD LOAD_LIBRARY_AS_DATAFILE = 2;
#define RT_ICON MAKEINTRESOURCEW(3)
#define RT_DIALOG MAKEINTRESOURCEW(5)
#define RT_STRING MAKEINTRESOURCEW(6)
HMODULE LoadLibraryExW(LPCWSTR name, HANDLE file, DWORD flags);
BOOL FreeLibrary(HMODULE module);
HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);
HGLOBAL LoadResource(HMODULE module, HRSRC resource);
LPVOID LockResource(HGLOBAL resource);
DWORD SizeofResource(HMODULE module, HRSRC resource);
int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int bufferUnits);
LANGID GetUserDefaultUILanguage();
// For this process, from now on. False, and the language stays, for 0.
BOOL SetUserDefaultUILanguage(LANGID language);

// ---- text ----
constexpr UINT CP_ACP = 0;
constexpr UINT CP_UTF8 = 65001;
constexpr DWORD MB_ERR_INVALID_CHARS = 8;
int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR source, int sourceBytes, LPWSTR target, int targetUnits);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR source, int sourceUnits, LPSTR target, int targetBytes,
                        LPCSTR defaultChar, BOOL* usedDefault);
DWORD CharLowerBuffW(LPWSTR text, DWORD units);
int wsprintfW(LPWSTR buffer, LPCWSTR format, ...); // no floating point; at most 1024 units with the zero
// C runtime functions for 16-bit text.
int _vsnwprintf(WCHAR* buffer, std::size_t units, const WCHAR* format, va_list arguments);
long _wtol(const WCHAR* text);
int _wcsicmp(const WCHAR* a, const WCHAR* b);
std::size_t wcslen(const WCHAR* text);
int wcscmp(const WCHAR* a, const WCHAR* b);

// ---- debug output ----
void NKDbgPrintfW(LPCWSTR format, ...);

// ---- component object model: the apartment that the media graph wants ----
constexpr DWORD COINIT_MULTITHREADED = 0;
HRESULT CoInitializeEx(LPVOID reserved, DWORD model);
void CoUninitialize();

// ---- sounds ----
constexpr DWORD SND_ASYNC = 0x00000001;
constexpr DWORD SND_NODEFAULT = 0x00000002;
constexpr DWORD SND_FILENAME = 0x00020000;
// Plays the wave file `name` and returns at once; null: silence. In any case the sound before ends. FALSE when there is
// no such file or it holds no sound, and for other flags than SND_ASYNC | SND_FILENAME, with or without SND_NODEFAULT.
BOOL PlaySoundW(LPCWSTR name, HMODULE module, DWORD flags);

// The program's entry, called by the host room.
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int showCommand);
