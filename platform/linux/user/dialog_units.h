// Dialog units, in which templates give places and sizes, and the pixels they stand for. Knows no window.
#pragma once

#include "platform/linux/ce/types.h"

namespace cardsong::user {

// Four units across and eight down are the width and height of a character of the system font at 10 points: 8 x 16
// pixels.
int PixelsAcross(LONG units);
int PixelsDown(LONG units);

} // namespace cardsong::user
