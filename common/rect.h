// The size of a rectangle. Its right and bottom edges are the first pixels outside it.
#pragma once

#include "platform/ce.h"

constexpr int WidthOf(const RECT& rect)
{
    return rect.right - rect.left;
}
constexpr int HeightOf(const RECT& rect)
{
    return rect.bottom - rect.top;
}
