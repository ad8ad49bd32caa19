// The texts of the user interface: numbered strings from the module of the user's language, and the program's own
// behind it. Knows no window.
#pragma once

#include "platform/ce.h"

// The program's module; its own string table is the fall-back. Stored first thing at start-up.
extern HINSTANCE g_hInstance;
// The string-table module that start-up loaded; null when there is none for the language.
extern HMODULE g_hStringModule;

// Loads "TAVO_StringTable_xxxx.dll" (xxxx: the user interface language in four lower-case hexadecimal digits) as a data
// file, anew on each call. Null when there is none. Freed by the caller (FreeLibrary).
[[nodiscard]] HMODULE LoadStringModule();

// String `id` of `module` (null: no module), or of the program when the module lacks it; at most 511 units. Empty when
// both lack it.
WString ReadString(HMODULE module, UINT id);
