// Keeps the language of the user interface in step with the device's language file, which all its programs share. Knows
// no window and no font.
#pragma once

#include "platform/ce.h"

// Called with the language in force when a toolkit is to choose its font anew; null, which is how a program starts, for
// none.
extern void (*g_chooseUiFont)(LANGID language);

// Takes the language over from the file "PocketStoreII\TAVO\Language\Language.dat" (two little-endian numbers of 32
// bits: of the texts, of the voice) and keeps both numbers in the registry, as "Text" and "Audio" of
// HKEY_LOCAL_MACHINE\TAVO\Language. Where that key is there already the file is not looked at and the language stays. A
// missing file, or one shorter than 8 bytes, changes nothing.
void SyncUiLanguageFromFile();

// 1 when the language file is there. Otherwise 1028 (traditional Chinese) becomes the language, and both numbers of the
// registry, and the result is 0. The file is never written.
int EnsureLanguageFile();
