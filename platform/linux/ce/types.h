// Basic types of the API: widths and handle types as the API promises them. Knows no function.
#pragma once

#include <cstdint>

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using INT = int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using ULONGLONG = std::uint64_t;
using LONGLONG = std::int64_t;
using UINT_PTR = std::uintptr_t;
using INT_PTR = std::intptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using HRESULT = std::int32_t;
using LSTATUS = LONG;
using LANGID = WORD;
using ATOM = WORD;
using COLORREF = DWORD;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;

using CHAR = char;
using WCHAR = char16_t;
using LPSTR = CHAR*;
using LPCSTR = const CHAR*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;

#define CARDSONG_TEXT(literal) u##literal
#define TEXT(literal) CARDSONG_TEXT(literal)

#define WINAPI
#define CALLBACK
#define APIENTRY

#ifndef NULL
#define NULL nullptr
#endif
#ifndef FALSE // macros as in the API, and as in other libraries' headers, so that either may come first
#define FALSE 0
#endif
#ifndef TRUE
#define TRUE 1
#endif
constexpr int MAX_PATH = 260;

using HANDLE = void*;
using HGDIOBJ = void*;
#define CARDSONG_HANDLE(name)                                                                                          \
    struct name##__;                                                                                                   \
    using name = name##__*
CARDSONG_HANDLE(HINSTANCE);
CARDSONG_HANDLE(HWND);
CARDSONG_HANDLE(HMENU);
CARDSONG_HANDLE(HICON);
CARDSONG_HANDLE(HRSRC);
CARDSONG_HANDLE(HKEY);
CARDSONG_HANDLE(HDC);
CARDSONG_HANDLE(HBITMAP);
CARDSONG_HANDLE(HBRUSH);
CARDSONG_HANDLE(HPEN);
CARDSONG_HANDLE(HFONT);
CARDSONG_HANDLE(HRGN);
#undef CARDSONG_HANDLE
using HMODULE = HINSTANCE;
using HCURSOR = HICON;
using HGLOBAL = HANDLE;

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1));

struct POINT {
    LONG x;
    LONG y;
};
struct SIZE {
    LONG cx;
    LONG cy;
};
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPRECT = RECT*;
using LPPOINT = POINT*;
using LPSIZE = SIZE*;

constexpr WORD LOWORD(ULONG_PTR value)
{
    return static_cast<WORD>(value & 0xFFFF);
}
constexpr WORD HIWORD(ULONG_PTR value)
{
    return static_cast<WORD>((value >> 16) & 0xFFFF);
}
constexpr LONG MAKELONG(WORD low, WORD high)
{
    return static_cast<LONG>(low | (static_cast<DWORD>(high) << 16));
}
constexpr WPARAM MAKEWPARAM(WORD low, WORD high)
{
    return static_cast<DWORD>(MAKELONG(low, high));
}
constexpr LPARAM MAKELPARAM(int low, int high)
{
    return static_cast<DWORD>(MAKELONG(static_cast<WORD>(low), static_cast<WORD>(high)));
}
constexpr COLORREF RGB(int r, int g, int b)
{
    return static_cast<COLORREF>((r & 0xFF) | ((g & 0xFF) << 8) | ((b & 0xFF) << 16));
}
inline LPWSTR MAKEINTRESOURCEW(int id)
{
    return reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(id)));
}
#define MAKEINTRESOURCE MAKEINTRESOURCEW
constexpr bool SUCCEEDED(HRESULT result)
{
    return result >= 0;
}
constexpr bool FAILED(HRESULT result)
{
    return result < 0;
}
constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
