// The Linux program: reads its options, lays out the device tree, opens the display, and runs the player in it.
#include "platform/host/command_line.h"
#include "platform/linux/host/session.h"
#include "platform/linux/host/user_defaults.h"

#include <malloc.h>

namespace {

// One heap for all threads, which seldom allocate at the same time, instead of one for each.
void ShareHeap()
{
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);
#endif
}

} // namespace

int main(int count, char** arguments)
{
    using namespace cardsong::host;
    ShareHeap();
    Options options = UserDefaults();
    const auto answer = AnswerCommandLine({ arguments + 1, arguments + count }, CARDSONG_VERSION, options);
    return answer ? *answer : RunSession(options);
}
