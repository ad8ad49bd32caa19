// The main window: it takes every key, command, timer tick and message, and hands each to the function that owns it.
#pragma once

#include "common/device_messages.h"
#include "platform/ce.h"

constexpr const WCHAR* kMainWindowClass = kPlayerWindowClass; // also the name of its dialog template and icon

// False when the class cannot be registered.
[[nodiscard]] bool RegisterMainWindowClass(HINSTANCE instance);
