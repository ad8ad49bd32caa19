// The main window: it takes every key, command, timer tick and message, and hands each to the function that owns it.
#pragma once

#include "platform/ce.h"

constexpr const WCHAR* kMainWindowClass = TEXT("AUDIOPLAYER"); // also the name of its dialog template and icon

// False when the class cannot be registered.
[[nodiscard]] bool RegisterMainWindowClass(HINSTANCE instance);
