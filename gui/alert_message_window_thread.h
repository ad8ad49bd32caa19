// The thread of an alert's window, from its start to its last message, and the class of all such windows.
#pragma once

#include "gui/alert_request.h"

#include <memory>

// True when the class is there. Unregistering does nothing while there is a window of it.
bool RegisterAlertClass();
void UnregisterAlertClass();

// Starts the thread, and returns when its window is shown and `life` says so: the window. Null, and `life` is free,
// when the system refuses.
HWND ShowOnThread(AlertRequest request, const std::shared_ptr<AlertLife>& life);
