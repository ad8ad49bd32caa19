// Plays a sound, and beside it a song's stand-in, as commands on its input ask; says how long each call took. For
// short_sounds.py.
#include "platform/ce.h"
#include "platform/device_tree.h"
#include "platform/linux/sound/sound_player.h"

#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>

namespace {

// Milliseconds.
template <typename Call>
void Time(const char* what, Call call)
{
    const auto start = std::chrono::steady_clock::now();
    const bool succeeded = call();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    std::printf("%s %d %.3f\n", what, succeeded ? 1 : 0, took.count());
    std::fflush(stdout);
}

} // namespace

// Commands, one a line: "play NAME" (in \Windows), "stop", "end". Any other ends the program without a word to the
// sound.
int main(int, char** arguments)
{
    cardsong::kernel::DeviceTree tree;
    tree.userDirectory = arguments[1];
    cardsong::kernel::InstallDeviceTree(tree);
    for (std::string line; std::getline(std::cin, line);) {
        if (line.starts_with("play ")) {
            const WString path = TEXT("\\Windows\\") + WString(line.begin() + 5, line.end());
            Time("play", [&] { return PlaySoundW(path.c_str(), nullptr, SND_ASYNC | SND_FILENAME) != FALSE; });
        } else if (line == "stop") {
            Time("stop", [] { return PlaySoundW(nullptr, nullptr, 0) != FALSE; });
        } else if (line == "end") {
            Time("end", [] { return cardsong::sound::EndSound(std::chrono::milliseconds(60)); });
            break;
        } else {
            break;
        }
    }
    return 0;
}
