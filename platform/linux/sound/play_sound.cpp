// The API's call for short sounds: files are read and looked into here, on the caller's thread.
#include "platform/linux/sound/sound_player.h"
#include "platform/whole_file.h"

namespace cardsong::sound {

namespace {

// Over a minute and a half of the compact disc's sound. The file is kept in memory while it plays.
constexpr DWORD kMaxFileBytes = 16 * 1024 * 1024;

} // namespace

} // namespace cardsong::sound

using namespace cardsong::sound;

BOOL PlaySoundW(LPCWSTR name, HMODULE, DWORD flags)
{
    StopSound();
    if (name == nullptr)
        return TRUE;
    if ((flags & ~SND_NODEFAULT) != (SND_ASYNC | SND_FILENAME)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    auto file = cardsong::kernel::ReadWholeFile(name, kMaxFileBytes);
    if (!file)
        return FALSE;
    const auto wave = ReadWave(*file);
    if (!wave) {
        SetLastError(ERROR_BAD_FORMAT);
        return FALSE;
    }
    StartSound({ std::move(*file), *wave }); // the samples stay where they are
    return TRUE;
}
