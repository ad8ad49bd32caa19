// Drawing side of the API: contexts, RGB565 bitmaps, blits, brushes, fonts, text. Signatures and results are the API's.
#pragma once

#include "platform/linux/ce/types.h"

// ---- records ----
struct BITMAP {
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;
};
struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};
struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};
constexpr int LF_FACESIZE = 32;
struct LOGFONTW {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[LF_FACESIZE];
};
struct TEXTMETRICW {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    WCHAR tmFirstChar;
    WCHAR tmLastChar;
    WCHAR tmDefaultChar;
    WCHAR tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};

// ---- constants ----
constexpr DWORD BI_RGB = 0;
constexpr DWORD BI_BITFIELDS = 3;
constexpr UINT DIB_RGB_COLORS = 0;
constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int DKGRAY_BRUSH = 3;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int BLACK_PEN = 7;
constexpr int SYSTEM_FONT = 13;
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;
constexpr int LOGPIXELSX = 88;
constexpr int LOGPIXELSY = 90;
constexpr int BITSPIXEL = 12;
constexpr int HORZRES = 8;
constexpr int VERTRES = 10;
constexpr UINT DT_TOP = 0x0000;
constexpr UINT DT_LEFT = 0x0000;
constexpr UINT DT_CENTER = 0x0001;
constexpr UINT DT_RIGHT = 0x0002;
constexpr UINT DT_VCENTER = 0x0004;
constexpr UINT DT_BOTTOM = 0x0008;
constexpr UINT DT_WORDBREAK = 0x0010;
constexpr UINT DT_SINGLELINE = 0x0020;
constexpr UINT DT_NOCLIP = 0x0100;
constexpr UINT DT_CALCRECT = 0x0400;
constexpr UINT DT_NOPREFIX = 0x0800;
constexpr UINT DT_WORD_ELLIPSIS = 0x00040000;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;

// ---- contexts and objects ----
HDC CreateCompatibleDC(HDC context);
BOOL DeleteDC(HDC context);
HGDIOBJ SelectObject(HDC context, HGDIOBJ object);
BOOL DeleteObject(HGDIOBJ object);
int GetObjectW(HANDLE object, int sizeBytes, LPVOID record);
HGDIOBJ GetStockObject(int index);
int GetDeviceCaps(HDC context, int index);
BOOL GdiFlush();

// ---- bitmaps ----
HBITMAP CreateCompatibleBitmap(HDC context, int widthPx, int heightPx);
HBITMAP CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD offset);
BOOL BitBlt(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY, DWORD operation);
BOOL StretchBlt(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY,
                int sourceWidthPx, int sourceHeightPx, DWORD operation);
BOOL TransparentImage(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY,
                      int sourceWidthPx, int sourceHeightPx, COLORREF key);
COLORREF GetPixel(HDC context, int x, int y);
// A bitmap of the screen's format made from an image file of any format that the system's imaging library reads.
// Null when the file is missing, foreign or larger than 4096 pixels in either direction; owned by the caller.
HBITMAP CreateBitmapFromImageFile(HWND window, LPCWSTR path);

// ---- animations of the imaging library ----
// Plays the GIF file `path` on a thread of its own: draws its frames at the corner of `place` on `target`, which must
// outlast it, and leaves out what has the colour `key`. `loops`: how often, -1 for ever. In place of the animation
// before; a process has one at a time. The first frame is drawn on return. FALSE, and nothing plays, when it cannot be
// read.
BOOL PlayGifAnim(LPCWSTR path, HDC target, const RECT* place, HWND window, DWORD unused, int loops, COLORREF key);
// Returns when nothing is drawn any more; FALSE when nothing was to stop.
BOOL StopGifAnim();

// ---- brushes and pens ----
HBRUSH CreateSolidBrush(COLORREF color);
HBRUSH CreatePatternBrush(HBITMAP bitmap);
HBRUSH GetSysColorBrush(int index);
int FillRect(HDC context, const RECT* rect, HBRUSH brush);

// ---- text ----
HFONT CreateFontIndirectW(const LOGFONTW* description);
COLORREF SetTextColor(HDC context, COLORREF color);
COLORREF SetBkColor(HDC context, COLORREF color);
int SetBkMode(HDC context, int mode);
int DrawTextW(HDC context, LPCWSTR text, int units, LPRECT rect, UINT format);
BOOL GetTextExtentExPointW(HDC context, LPCWSTR text, int units, int maxExtentPx, int* fit, int* extentsPx,
                           LPSIZE size);
BOOL GetTextMetricsW(HDC context, TEXTMETRICW* metrics);
