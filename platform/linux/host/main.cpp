// The Linux program: reads its options, lays out the device tree, opens the display, and runs the player in it.
#include "platform/host/command_line.h"
#include "platform/linux/host/session.h"
#include "platform/linux/host/user_defaults.h"

int main(int count, char** arguments)
{
    using namespace cardsong::host;
    Options options = UserDefaults();
    const auto answer = AnswerCommandLine({ arguments + 1, arguments + count }, CARDSONG_VERSION, options);
    return answer ? *answer : RunSession(options);
}
