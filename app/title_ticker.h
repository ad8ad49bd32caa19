// The endless ticker of the song's title: two strips that follow each other through the display. Knows no window.
#pragma once

#include "platform/ce.h"

constexpr UINT kTitleTimerPeriodMs = 100;

struct TitleStrip {
    RECT rect;
    bool isActive;
};

extern TitleStrip g_titleStripA;
extern TitleStrip g_titleStripB;
extern WString g_titleText;
extern LONG g_titleWidthPx; // of the title in the title font

// Both strips inactive and at their places for a stopped player.
void ResetTitleStrips();
// Lets a title come in, when none is on its way.
void StartTitleStrips();

enum class TitleMotion { Standing, Moving };

// One tick: lets the second copy in and the first out. A moving title goes 5 pixels to the left.
void ScrollTitleStrips(TitleMotion motion);
