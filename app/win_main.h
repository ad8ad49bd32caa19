// The program's main loop and its end. WinMain itself is declared by the system.
#pragma once

#include "platform/ce.h"

// Runs one message of the main loop: dialog keys first, then translation and dispatch.
void RunMessage(HWND mainWindow, MSG& message);
