// Everything that other modules of the device may use of Cardsong: two containers of pointers and four conversions of
// Chinese text. Installed as <cardsong/device.h>; `pkg-config --cflags --libs cardsong-device` finds it.
#pragma once

#include "containers/ptr_array_ctrl.h"
#include "containers/ptr_list_ctrl.h"
#include "encoding/big5_gb_text.h"
#include "encoding/code_page.h"
#include "encoding/gb_unicode_text.h"
