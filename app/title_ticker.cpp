#include "app/title_ticker.h"

namespace {

constexpr LONG kTop = 45;
constexpr LONG kBottom = 115;
constexpr LONG kFirstLeft = 180;   // a new title is readable at once, and on its way soon
constexpr LONG kEntryLeft = 318;   // right edge of the display
constexpr LONG kFollowBelow = 268; // the copy enters when 50 pixels of the display's width are free
constexpr LONG kStepPx = 5;

constexpr RECT kRestingRect{ kFirstLeft, kTop, kEntryLeft, kBottom };

TitleStrip StripFrom(LONG left)
{
    return { { left, kTop, left + g_titleWidthPx, kBottom }, true };
}

bool MakesRoomForTheOther(const TitleStrip& strip)
{
    return strip.rect.left < 0 && strip.rect.right >= 1 && strip.rect.right <= kFollowBelow;
}

void StepStrip(TitleStrip& strip, TitleStrip& other)
{
    if (!strip.isActive)
        return;
    if (strip.rect.right <= 0)
        strip.isActive = false;
    else if (MakesRoomForTheOther(strip) && !other.isActive)
        other = StripFrom(kEntryLeft);
}

void MoveStrip(TitleStrip& strip)
{
    if (!strip.isActive)
        return;
    strip.rect.left -= kStepPx;
    strip.rect.right -= kStepPx;
}

} // namespace

TitleStrip g_titleStripA{ kRestingRect, false };
TitleStrip g_titleStripB{};
WString g_titleText;
LONG g_titleWidthPx = 0;

void ResetTitleStrips()
{
    g_titleStripA = { kRestingRect, false };
    g_titleStripB = {};
}

void StartTitleStrips()
{
    if (!g_titleStripA.isActive && !g_titleStripB.isActive)
        g_titleStripA = StripFrom(kFirstLeft);
}

void ScrollTitleStrips(TitleMotion motion)
{
    StepStrip(g_titleStripA, g_titleStripB);
    StepStrip(g_titleStripB, g_titleStripA);
    if (motion == TitleMotion::Moving) {
        MoveStrip(g_titleStripA);
        MoveStrip(g_titleStripB);
    }
}
