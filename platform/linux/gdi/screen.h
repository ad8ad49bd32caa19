// The 320 x 240 picture that windows draw on and the display shows. Knows no window: it is told regions.
#pragma once

#include "platform/linux/ce/types.h"

#include <cairo.h>

#include <cstdint>
#include <span>

namespace cardsong::gdi {

// A context that draws on the screen: its point 0,0 is `origin` (screen pixels), and only `visible` (screen pixels,
// copied) is ever touched. The caller destroys it with DestroyScreenContext. DeleteDC refuses such a context.
HDC CreateScreenContext(POINT origin, const cairo_region_t* visible);
// Moves a living context, for a window that was moved or covered while its context is held.
void UpdateScreenContext(HDC context, POINT origin, const cairo_region_t* visible);
void DestroyScreenContext(HDC context);

// Copies the screen as RGB565 words, rows without padding, 320 x 240. Thread-safe.
void CopyScreen(std::span<std::uint16_t> pixels);
// Brings such a copy of the whole screen up to date and returns whether the screen differed from it. Thread-safe.
bool UpdateScreenCopy(std::span<std::uint16_t> pixels);
// A number that grows with every drawing call that reached the screen. Thread-safe.
std::uint64_t ScreenGeneration();
// Whether the calling thread has ever drawn on the screen.
bool HasDrawnOnScreen();
// Fills the screen with black, for a new start of the display and between tests.
void ClearScreen();

} // namespace cardsong::gdi
