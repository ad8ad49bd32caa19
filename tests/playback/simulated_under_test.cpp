#include "tests/playback/engine_under_test.h"

namespace cardsong::test {

const char* SinkForTests()
{
    return "";
}

// Nothing sounds, but every song keeps time.
bool HasSoundOutput()
{
    return true;
}

bool KeepsRate()
{
    return true;
}

} // namespace cardsong::test
