// The picture of the main window: background, display panel with title and times, soft keys.
#pragma once

#include "platform/ce.h"

// Where the panel's texts change: what a new song needs repainted.
constexpr RECT kDisplayRect{ 34, 45, 318, 135 };

// Loads the background picture; without one the ground is black.
void LoadBackground();
// Frees every picture, brush and font of the main window's painting.
void FreeBackground();
// Answers WM_PAINT.
void PaintMainWindow(HWND window);
// Answers WM_ERASEBKGND.
void EraseMainWindow(HDC context);
// The font of the title, made at the first call; owned here.
[[nodiscard]] HFONT TitleFont();
