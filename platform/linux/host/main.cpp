// The Linux program: reads its options, lays out the device tree, opens the display, and runs the player in it.
#include "platform/host/options.h"
#include "platform/linux/host/session.h"
#include "platform/linux/host/user_defaults.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kBadOptions = 2;

} // namespace

int main(int count, char** arguments)
{
    using namespace cardsong::host;
    Options options = UserDefaults();
    if (const auto error = ReadOptions({ arguments + 1, arguments + count }, options)) {
        std::fprintf(stderr, "cardsong: %s\n", error->message.c_str());
        return kBadOptions;
    }
    if (options.showHelp) {
        std::fputs(kHelpText, stdout);
        return 0;
    }
    if (options.showVersion) {
        std::puts("cardsong " CARDSONG_VERSION);
        return 0;
    }
    return RunSession(options);
}
