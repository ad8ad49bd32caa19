// The picture of an alert: background, title, message, each where it belongs. Knows no window.
#pragma once

#include "common/gdi_handles.h"
#include "gui/message_wrapping.h"

#include <vector>

struct AlertText {
    WString title;
    WString message;
    std::vector<MessageLine> lines; // of the message
    UniqueFont font;
};

// Finds the lines of the message for a window of that width. `context`: one like the window's.
void WrapAlertMessage(HDC context, AlertText& text, int windowWidthPx);
// In one line at the top of a window of that width; a title that is too long is cut after a word.
void DrawAlertTitle(HDC context, const AlertText& text, int windowWidthPx);
// Line under line, each in the middle of the screen's width, the block in the middle of the room above the buttons of a
// window of that height; lines that would reach these are left out.
void DrawAlertMessage(HDC context, const AlertText& text, int windowHeightPx);

// All of an alert but its buttons, of the screen's size, in the format of `like`; owned by the caller. The background
// stands in the middle; without one, and around it, all is black.
[[nodiscard]] UniqueBitmap DrawAlertPicture(HDC like, LPCWSTR backgroundPath, const AlertText& text);
// Copies such a picture, which no context may hold.
void CopyAlertPicture(HDC screen, HBITMAP picture);
