// The seam on Windows: the system's own headers, and the names that Windows CE has and desktop Windows lacks.
#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <dbt.h>

#include <cstdarg>
#include <cstdio>
#include <cwchar>

// Windows CE's entry takes a wide command line; the desktop's is this one.
#define WinMain wWinMain

constexpr DWORD WS_EX_NOANIMATION = 0x04000000;
constexpr DWORD EVENT_PULSE = 1;
constexpr DWORD EVENT_RESET = 2;
constexpr DWORD EVENT_SET = 3;

BOOL EventModify(HANDLE event, DWORD action);
DWORD Random();
void NKDbgPrintfW(LPCWSTR format, ...);
BOOL TransparentImage(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY,
                      int sourceWidthPx, int sourceHeightPx, COLORREF key);
HBITMAP CreateBitmapFromImageFile(HWND window, LPCWSTR path);
