// The one header through which the player sees the system: the Windows CE 5.0 API, the subset that the player calls.
// It names no library that stands behind it. On Windows the system's own headers answer; elsewhere our layer does.
#pragma once

#ifdef _WIN32
#include "platform/windows/ce_windows.h"
#else
#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/ce/messages.h"
#include "platform/linux/ce/types.h"
#include "platform/linux/ce/user.h"
#endif

#include <string>
#include <string_view>

// UTF-16 text of the program. A literal is written TEXT("...").
using WString = std::basic_string<WCHAR>;
using WStringView = std::basic_string_view<WCHAR>;
