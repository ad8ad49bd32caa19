#include "tests/gui/recorded_sounds_linux_test.h"

#include <mutex>
#include <utility>

namespace {

std::mutex g_mutex;
cardsong::test::Sounds g_sounds;

} // namespace

namespace cardsong::test {

Sounds TakeSounds()
{
    const std::lock_guard lock(g_mutex);
    return std::exchange(g_sounds, {});
}

} // namespace cardsong::test

BOOL PlaySoundW(LPCWSTR name, HMODULE, DWORD flags)
{
    const std::lock_guard lock(g_mutex);
    g_sounds.push_back({ name != nullptr ? WString(name) : WString(), flags });
    return TRUE;
}
