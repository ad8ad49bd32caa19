#include "tests/playback/engine_under_test.h"

namespace cardsong::test {

const char* SinkForTests()
{
    return "null";
}

bool HasSoundOutput()
{
    return true;
}

bool KeepsRate()
{
    return true;
}

} // namespace cardsong::test
