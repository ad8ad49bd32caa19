// The developers' log on the system's debug output; silent unless the registry switches it on. Knows no caller.
#pragma once

#include "platform/ce.h"

// The numbers by which this program and the routines for the transmitter name themselves in the log; 1 to 13 and 32 to
// 37 have a name.
constexpr DWORD kMusicPlayerTrace = 33;
constexpr DWORD kFmTransmitterTrace = 11;

// Whether the switch has been read, which happens once a process, and whether the log is on. Without a lock: two
// threads that log first at the same time read the same answer.
extern BYTE g_logChecked;
extern BYTE g_logEnabled;

// 1 when the DWORD "Activate" of HKEY_LOCAL_MACHINE\TAVO\TAVO_BACKDOOR is not 0, else 0; a missing value is created as
// 0.
int IsTraceLogSwitchedOn();

// Writes one message, cut to 255 units: "[AP][name][FunName]message" and a line break for a module with a name, else
// "[AP Log][moduleId]message". `format` and its arguments are those of wsprintfW.
void TraceLog(DWORD moduleId, LPCWSTR format, ...);
