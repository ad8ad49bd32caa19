// The keyed blit, which the desktop keeps in a library of its own under another name.
#include "platform/ce.h"

BOOL TransparentImage(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY,
                      int sourceWidthPx, int sourceHeightPx, COLORREF key)
{
    return TransparentBlt(target, x, y, widthPx, heightPx, source, sourceX, sourceY, sourceWidthPx, sourceHeightPx,
                          key);
}
