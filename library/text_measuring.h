// How much room a text takes on the screen.
#pragma once

#include "platform/ce.h"

// Of the whole text, in pixels; nothing for null.
SIZE MeasureText(const WCHAR* text, HFONT font);
