#include "tests/playback/engine_under_test.h"

#include "platform/ce.h"

#include <mmsystem.h>

namespace cardsong::test {

// The null renderer takes whatever it is offered, so a graph connects it to the file itself and decodes nothing.
const char* SinkForTests()
{
    return "";
}

bool HasSoundOutput()
{
    return waveOutGetNumDevs() > 0;
}

// Wine 8 answers S_OK to every speed and keeps to 1.0.
bool KeepsRate()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr;
}

} // namespace cardsong::test
