// What goes from an alert's object to the thread of its window, and what the two share while it is shown.
#pragma once

#include "common/kernel_handles.h"

#include <atomic>

struct AlertRequest {
    HWND owner = nullptr;
    WString title;
    WString message;
    int kind = 0;
    int sound = 0;
    UniqueModule strings;
    HWND disabled = nullptr; // until the alert closes
};

enum class AlertState : int { Preparing = 0, Prepared = 1, Starting = 2, Shown = 3, Closing = 4, Free = 5 };

struct AlertLife {
    std::atomic<AlertState> state = AlertState::Free;
    std::atomic<HWND> window = nullptr; // while it is shown
};
