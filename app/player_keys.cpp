#include "app/player_keys.h"

#include "app/command_ids.h"
#include "app/player_end.h"

#include <algorithm>
#include <iterator>

namespace {

enum class WhenHeld { ActsAgain, ActsOnce };

// A key that the dialog manager uses up (Enter, Escape, Tab, arrows) reaches the window only when it asks. Every other
// one acts when it is dispatched.
enum class Moment { WhenAsked, WhenDispatched };

struct KeyEntry {
    WPARAM key;
    WORD command;
    WhenHeld whenHeld;
    Moment moment;
};

constexpr KeyEntry kKeys[] = {
    { VK_LEFT, kCommandPrevious, WhenHeld::ActsAgain, Moment::WhenAsked },
    { VK_RIGHT, kCommandNext, WhenHeld::ActsAgain, Moment::WhenAsked },
    { VK_RETURN, kCommandPlay, WhenHeld::ActsOnce, Moment::WhenAsked }, // a toggle: held, it would stutter
    { VK_UP, kCommandAudioSettings, WhenHeld::ActsAgain, Moment::WhenAsked },
    { VK_DOWN, kCommandAudioSettings, WhenHeld::ActsAgain, Moment::WhenAsked },
    { VK_F24, kCommandExit, WhenHeld::ActsAgain, Moment::WhenAsked }, // then there is no window to dispatch it to
};

const KeyEntry* Find(WPARAM key)
{
    const auto* const found = std::ranges::find(kKeys, key, &KeyEntry::key);
    return found != std::end(kKeys) ? found : nullptr;
}

bool IsRepeated(LPARAM details)
{
    return (HIWORD(static_cast<ULONG_PTR>(details)) & KF_REPEAT) != 0;
}

// The host strikes the exit key, too, when the program is to end: it counts no stroke.
bool IsStruckByHand(LPARAM details)
{
    return LOWORD(static_cast<ULONG_PTR>(details)) != 0;
}

} // namespace

void ActOnKey(HWND window, WPARAM key, LPARAM details)
{
    const KeyEntry* const entry = Find(key);
    if (entry == nullptr || (entry->whenHeld == WhenHeld::ActsOnce && IsRepeated(details)))
        return;
    if (entry->command == kCommandExit && IsStruckByHand(details))
        NoteThatUserExits();
    SendMessageW(window, WM_COMMAND, entry->command, 0);
}

bool ActsWhenAsked(WPARAM key)
{
    const KeyEntry* const entry = Find(key);
    return entry == nullptr || entry->moment == Moment::WhenAsked;
}
