// The seam on Windows: the system's own headers, the names that Windows CE has and desktop Windows lacks, and the
// functions that answer differently on a device in the place of the system's own.
#pragma once

#include <windows.h>

#include <dbt.h>
#include <mmsystem.h>
#include <objbase.h>

#include <cstdarg>
#include <cstdio>
#include <cwchar>

#include "platform/windows/kernel/device_calls.h"
#include "platform/windows/screen/window_calls.h"

// The rooms behind the seam call the system itself.
#ifndef CARDSONG_BEHIND_THE_SEAM
#define CreateFileW cardsong::device::CreateFileW
#define DeviceIoControl cardsong::device::DeviceIoControl
#define FindFirstFileW cardsong::device::FindFirstFileW
#define FindNextFileW cardsong::device::FindNextFileW
#define FindClose cardsong::device::FindClose
#define GetFileAttributesW cardsong::device::GetFileAttributesW
#define GetFileAttributesExW cardsong::device::GetFileAttributesExW
#define DeleteFileW cardsong::device::DeleteFileW
#define CreateDirectoryW cardsong::device::CreateDirectoryW
#define SHGetSpecialFolderPathW cardsong::device::SHGetSpecialFolderPathW
#define _wfopen cardsong::device::_wfopen
#define CreateProcessW cardsong::device::CreateProcessW
#define LoadLibraryExW cardsong::device::LoadLibraryExW
#define GetUserDefaultUILanguage cardsong::device::GetUserDefaultUILanguage
#define RegOpenKeyExW cardsong::device::RegOpenKeyExW
#define RegCreateKeyExW cardsong::device::RegCreateKeyExW
#define RegQueryValueExW cardsong::device::RegQueryValueExW
#define RegSetValueExW cardsong::device::RegSetValueExW
#define RegEnumKeyExW cardsong::device::RegEnumKeyExW
#define RegEnumValueW cardsong::device::RegEnumValueW
#define PlaySoundW cardsong::device::PlaySoundW

#define RegisterClassW cardsong::device::RegisterClassW
#define CreateWindowExW cardsong::device::CreateWindowExW
#define CreateDialogIndirectParamW cardsong::device::CreateDialogIndirectParamW
#define SetWindowLongPtrW cardsong::device::SetWindowLongPtrW
#define ShowWindow cardsong::device::ShowWindow
#define SetForegroundWindow cardsong::device::SetForegroundWindow
#define MoveWindow cardsong::device::MoveWindow
#define SetWindowPos cardsong::device::SetWindowPos
#define GetWindowRect cardsong::device::GetWindowRect
#define GetClientRect cardsong::device::GetClientRect
#define ClientToScreen cardsong::device::ClientToScreen
#define ScreenToClient cardsong::device::ScreenToClient
#define GetDC cardsong::device::GetDC
#define BeginPaint cardsong::device::BeginPaint
#define InvalidateRect cardsong::device::InvalidateRect
#define ValidateRect cardsong::device::ValidateRect
#define GetUpdateRect cardsong::device::GetUpdateRect
#define GetDeviceCaps cardsong::device::GetDeviceCaps
#define CreateFontIndirectW cardsong::device::CreateFontIndirectW
#define GetMessageW cardsong::device::GetMessageW
#define PeekMessageW cardsong::device::PeekMessageW
#endif

// Windows CE's entry takes a wide command line; the host room calls it.
#define WinMain CardsongMain
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int showCommand);

constexpr DWORD WS_EX_NOANIMATION = 0x04000000;
#define CSIDL_PERSONAL 0x0005 // as <shlobj.h> has it, which not everybody includes
constexpr DWORD EVENT_PULSE = 1;
constexpr DWORD EVENT_RESET = 2;
constexpr DWORD EVENT_SET = 3;

// Puts the file `source` in the place of the file `target`, which need not be there, in one step. Both lie in one
// folder.
BOOL DeleteAndRenameFile(LPCWSTR target, LPCWSTR source);
// Our helper: which folder it is that a path leads to, whatever links lie on the way. False when there is none.
struct FolderIdentity {
    ULONGLONG volume;
    ULONGLONG index;
    bool operator==(const FolderIdentity&) const = default;
};
BOOL GetFolderIdentity(LPCWSTR path, FolderIdentity* identity);
// Sets the language of the user interface for this process, from now on. False, and the language stays, for 0.
BOOL SetUserDefaultUILanguage(LANGID language);
BOOL EventModify(HANDLE event, DWORD action);
DWORD Random();
void NKDbgPrintfW(LPCWSTR format, ...);
BOOL TransparentImage(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY,
                      int sourceWidthPx, int sourceHeightPx, COLORREF key);
// A bitmap of the screen's format made from an image file of any format that the system's imaging library reads.
// Null when the file is missing, foreign or larger than 4096 pixels in either direction; owned by the caller.
HBITMAP CreateBitmapFromImageFile(HWND window, LPCWSTR path);
// Plays the GIF file `path` on a thread of its own: draws its frames at the corner of `place` on `target`, which must
// outlast it, and leaves out what has the colour `key`. `loops`: how often, -1 for ever. In place of the animation
// before; a process has one at a time. The first frame is drawn on return. FALSE, and nothing plays, when it cannot be
// read.
BOOL PlayGifAnim(LPCWSTR path, HDC target, const RECT* place, HWND window, DWORD unused, int loops, COLORREF key);
// Returns when nothing is drawn any more; FALSE when nothing was to stop.
BOOL StopGifAnim();
