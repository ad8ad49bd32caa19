// The Linux program: reads its options, lays out the device tree, opens the display, and runs the player in it.
#include "platform/console_program.h"
#include "platform/host/command_line.h"
#include "platform/linux/host/doctor.h"
#include "platform/linux/host/session.h"
#include "platform/linux/host/user_defaults.h"

#include <malloc.h>

namespace {

// All threads share one heap. They seldom allocate at the same time, and a heap for each takes memory.
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
    OpenStandardStreams();
    ShareHeap();
    Options options = UserDefaults();
    const auto answer = AnswerCommandLine({ arguments + 1, arguments + count }, CARDSONG_VERSION, options);
    if (answer)
        return *answer;
    return options.examine ? RunDoctor(options) : RunSession(options);
}
