#include "platform/linux/user/key_state.h"

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

namespace {

constexpr BYTE kKeyIsDown = 0x80;
constexpr BYTE kKeyIsToggled = 0x01;

} // namespace

void RememberKey(ThreadQueue& queue, const InputEvent& event)
{
    BYTE& state = queue.keys[event.key];
    if (event.kind == InputKind::KeyUp) {
        state = static_cast<BYTE>(state & ~kKeyIsDown);
        return;
    }
    if ((state & kKeyIsDown) == 0)
        state ^= kKeyIsToggled;
    state |= kKeyIsDown;
}

} // namespace cardsong::user

using namespace cardsong::user;

SHORT GetKeyState(int key)
{
    const auto& queue = CurrentQueue();
    LockedDesktop desktop;
    const auto state = key < 0 || key > 255 ? 0 : queue->keys[static_cast<std::size_t>(key)];
    const int isDown = (state & kKeyIsDown) != 0 ? 0xFF80 : 0;
    return static_cast<SHORT>(static_cast<USHORT>(isDown | (state & kKeyIsToggled)));
}
