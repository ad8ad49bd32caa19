// Where the screen's picture lies on a larger or smaller surface, and how it is turned there: centred, black around it,
// every pixel a whole number of times as large where that fits. Pure arithmetic.
#pragma once

#include "platform/ce.h"

#include <optional>

namespace cardsong::host {

// By how many degrees the picture is turned clockwise: at a quarter its top edge lies at the right.
enum class Turn { None = 0, Quarter = 90, Half = 180, ThreeQuarters = 270 };

// The place of the turned picture on its surface.
struct Viewport {
    int left = 0;
    int top = 0;
    int widthPx = 0;
    int heightPx = 0;
    Turn turn = Turn::None;
    bool operator==(const Viewport&) const = default;
};

// The size of the picture when it is turned.
SIZE TurnedSize(Turn turn);
// How the picture is turned on a screen of this size when nobody asks for a turn: upright where that fits; on a smaller
// screen a quarter where that shows it larger.
Turn TurnThatFits(int screenWidthPx, int screenHeightPx);
// The largest viewport that a surface of this size holds: at a whole scale, or else made smaller in proportion.
Viewport FitViewport(int surfaceWidthPx, int surfaceHeightPx, Turn turn = Turn::None);
// The whole scale at which a viewport shows the picture; 0 when it is made smaller.
int ScaleOf(const Viewport& viewport);
// The scale of a window on a desktop whose free part has this size. The window takes at most three fifths of it, but
// has a scale of 2 where that fits at all; 1 at least.
int ComfortableScale(int desktopWidthPx, int desktopHeightPx, Turn turn = Turn::None);
// The size of such a window; on a desktop smaller than the picture, of one that it holds.
SIZE ComfortableSize(int desktopWidthPx, int desktopHeightPx, Turn turn = Turn::None);

// The screen's pixel under the middle of a point of the surface; nothing in the black around the picture.
std::optional<POINT> ToScreenPoint(const Viewport& viewport, int x, int y);
// The same, but a point in the black becomes the nearest pixel: for a finger that slides off.
POINT ToNearestScreenPoint(const Viewport& viewport, int x, int y);
// All points of the surface that show something of `part` of the screen.
RECT ToSurface(const Viewport& viewport, const RECT& part);

} // namespace cardsong::host
