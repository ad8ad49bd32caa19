// What the keys of a desktop's keyboard do beside those of the device.
#include "platform/desktop_keys.h"

#include "app/command_ids.h"
#include "app/main_window.h"
#include "gui/skin_list_geometry.h"
#include "gui/soft_key_layout.h"

namespace cardsong {

namespace {

constexpr CommandKey kCommandKeys[] = {
    { kCommandPlay, "Play" },
    { kCommandPause, "Pause" },
    { kCommandStop, "Stop", { { "S", "AudioStop" }, { 'S', VK_MEDIA_STOP } } },
    { kCommandPrevious, "Previous" },
    { kCommandNext, "Next" },
    { kCommandBack5, "Back5", { { "," }, { VK_OEM_COMMA } }, WhenKeyIsHeld::ActsAgain },
    { kCommandForward5, "Forward5", { { "." }, { VK_OEM_PERIOD } }, WhenKeyIsHeld::ActsAgain },
    // Each of these faces does what every other face of its button does.
    { kCommandShuffleOff, "Shuffle", { { "Z" }, { 'Z' } } },
    { kCommandRepeatOff, "Repeat", { { "R" }, { 'R' } } },
    { kCommandPlayListWindow, "List", { { "L" }, { 'L' } } },
    { kCommandAudioSettings, "Settings", { { "M" }, { 'M' } } },
};

constexpr POINT MiddleOf(const RECT& rect)
{
    return { (rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2 };
}

constexpr TapKey kTapKeys[] = {
    { MiddleOf(kSkinListRowRects[0]), { { "1" }, { '1' } } },
    { MiddleOf(kSkinListRowRects[1]), { { "2" }, { '2' } } },
    { MiddleOf(kSkinListRowRects[2]), { { "3" }, { '3' } } },
    { MiddleOf(kSkinListRowRects[3]), { { "4" }, { '4' } } },
    { MiddleOf(kScrollUpPlace), { { "PageUp" }, { VK_PRIOR } } },
    { MiddleOf(kScrollDownPlace), { { "PageDown" }, { VK_NEXT } } },
};

} // namespace

DesktopKeys ProgramDesktopKeys()
{
    return { kMainWindowClass, kCommandKeys, kTapKeys, kCommandExit };
}

} // namespace cardsong
