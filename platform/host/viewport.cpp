#include "platform/host/viewport.h"

#include "platform/screen_size.h"

#include <algorithm>

namespace cardsong::host {
namespace {

int WholeScale(int surfaceWidthPx, int surfaceHeightPx, Turn turn)
{
    const SIZE picture = TurnedSize(turn);
    return std::min(surfaceWidthPx / picture.cx, surfaceHeightPx / picture.cy);
}

// As large as the surface holds it; a pixel at least.
SIZE SmallerSize(int surfaceWidthPx, int surfaceHeightPx, Turn turn)
{
    const SIZE picture = TurnedSize(turn);
    const LONG widthPx = std::min<LONG>(surfaceWidthPx, surfaceHeightPx * picture.cx / picture.cy);
    const LONG heightPx = std::min<LONG>(surfaceHeightPx, surfaceWidthPx * picture.cy / picture.cx);
    return { std::max<LONG>(1, widthPx), std::max<LONG>(1, heightPx) };
}

// From the turned picture's pixels to the screen's.
POINT TurnBack(Turn turn, LONG x, LONG y)
{
    switch (turn) {
    case Turn::Quarter: return { y, kScreenHeightPx - 1 - x };
    case Turn::Half: return { kScreenWidthPx - 1 - x, kScreenHeightPx - 1 - y };
    case Turn::ThreeQuarters: return { kScreenWidthPx - 1 - y, x };
    default: return { x, y };
    }
}

RECT TurnRect(Turn turn, const RECT& part)
{
    switch (turn) {
    case Turn::Quarter: return { kScreenHeightPx - part.bottom, part.left, kScreenHeightPx - part.top, part.right };
    case Turn::Half:
        return { kScreenWidthPx - part.right, kScreenHeightPx - part.bottom, kScreenWidthPx - part.left,
                 kScreenHeightPx - part.top };
    case Turn::ThreeQuarters: return { part.top, kScreenWidthPx - part.right, part.bottom, kScreenWidthPx - part.left };
    default: return part;
    }
}

// `count` pixels of the picture lie on `lengthPx` of the surface: which of them is under the middle of `offset`?
LONG PixelUnder(int offset, int lengthPx, LONG count)
{
    return (2 * offset + 1) * count / (2 * lengthPx);
}

POINT PointUnder(const Viewport& viewport, int x, int y)
{
    const SIZE picture = TurnedSize(viewport.turn);
    return TurnBack(viewport.turn, PixelUnder(x - viewport.left, viewport.widthPx, picture.cx),
                    PixelUnder(y - viewport.top, viewport.heightPx, picture.cy));
}

LONG DivideUpwards(LONG value, LONG divisor)
{
    return (value + divisor - 1) / divisor;
}

} // namespace

SIZE TurnedSize(Turn turn)
{
    if (turn == Turn::Quarter || turn == Turn::ThreeQuarters)
        return { kScreenHeightPx, kScreenWidthPx };
    return { kScreenWidthPx, kScreenHeightPx };
}

Turn TurnThatFits(int screenWidthPx, int screenHeightPx)
{
    if (WholeScale(screenWidthPx, screenHeightPx, Turn::None) > 0)
        return Turn::None;
    const int uprightPx = FitViewport(screenWidthPx, screenHeightPx, Turn::None).widthPx;
    const int turnedPx = FitViewport(screenWidthPx, screenHeightPx, Turn::Quarter).heightPx;
    return turnedPx > uprightPx ? Turn::Quarter : Turn::None;
}

Viewport FitViewport(int surfaceWidthPx, int surfaceHeightPx, Turn turn)
{
    const int scale = WholeScale(surfaceWidthPx, surfaceHeightPx, turn);
    SIZE size = TurnedSize(turn);
    if (scale > 0)
        size = { size.cx * scale, size.cy * scale };
    else
        size = SmallerSize(surfaceWidthPx, surfaceHeightPx, turn);
    return { std::max<int>(0, surfaceWidthPx - size.cx) / 2, std::max<int>(0, surfaceHeightPx - size.cy) / 2,
             static_cast<int>(size.cx), static_cast<int>(size.cy), turn };
}

int ScaleOf(const Viewport& viewport)
{
    return WholeScale(viewport.widthPx, viewport.heightPx, viewport.turn);
}

int ComfortableScale(int desktopWidthPx, int desktopHeightPx, Turn turn)
{
    const int largest = WholeScale(desktopWidthPx, desktopHeightPx, turn);
    const int comfortable = WholeScale(desktopWidthPx / 5 * 3, desktopHeightPx / 5 * 3, turn);
    return std::clamp(largest, 1, std::max(2, comfortable));
}

SIZE ComfortableSize(int desktopWidthPx, int desktopHeightPx, Turn turn)
{
    const int scale = ComfortableScale(desktopWidthPx, desktopHeightPx, turn);
    const SIZE picture = TurnedSize(turn);
    const Viewport largest = FitViewport(desktopWidthPx, desktopHeightPx, turn);
    return { std::min<LONG>(picture.cx * scale, largest.widthPx),
             std::min<LONG>(picture.cy * scale, largest.heightPx) };
}

std::optional<POINT> ToScreenPoint(const Viewport& viewport, int x, int y)
{
    if (x < viewport.left || x >= viewport.left + viewport.widthPx || y < viewport.top ||
        y >= viewport.top + viewport.heightPx)
        return std::nullopt;
    return PointUnder(viewport, x, y);
}

POINT ToNearestScreenPoint(const Viewport& viewport, int x, int y)
{
    return PointUnder(viewport, std::clamp(x, viewport.left, viewport.left + viewport.widthPx - 1),
                      std::clamp(y, viewport.top, viewport.top + viewport.heightPx - 1));
}

RECT ToSurface(const Viewport& viewport, const RECT& part)
{
    const SIZE picture = TurnedSize(viewport.turn);
    const RECT turned = TurnRect(viewport.turn, part);
    return { viewport.left + turned.left * viewport.widthPx / picture.cx,
             viewport.top + turned.top * viewport.heightPx / picture.cy,
             viewport.left + DivideUpwards(turned.right * viewport.widthPx, picture.cx),
             viewport.top + DivideUpwards(turned.bottom * viewport.heightPx, picture.cy) };
}

} // namespace cardsong::host
