#include "platform/linux/display/wayland_keyboard.h"

#include "platform/linux/display/machine_keys.h"
#include "platform/linux/display/wayland_window.h"
#include "platform/linux/kernel/clock.h"

#include <algorithm>
#include <utility>
#include <wayland-client.h>

namespace cardsong::display {

WaylandKeyboard::WaylandKeyboard(const WaylandInput& input, wl_seat& seat)
    : m_input(input), m_keyboard(wl_seat_get_keyboard(&seat))
{
    Listen();
}

WaylandKeyboard::~WaylandKeyboard()
{
    Leave();
}

void WaylandKeyboard::Listen()
{
    static constexpr wl_keyboard_listener kListener = {
        .keymap = [](void* data, wl_keyboard*, std::uint32_t, int file,
                     std::uint32_t sizeBytes) { static_cast<WaylandKeyboard*>(data)->m_keymap.Load(file, sizeBytes); },
        .enter =
            [](void* data, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {
                static_cast<WaylandKeyboard*>(data)->m_isHere = true;
                static_cast<WaylandKeyboard*>(data)->m_input.window.TopLevel().SetKeyboardFocus(true);
            },
        .leave = [](void* data, wl_keyboard*, std::uint32_t,
                    wl_surface*) { static_cast<WaylandKeyboard*>(data)->Leave(); },
        .key =
            [](void* data, wl_keyboard*, std::uint32_t serial, std::uint32_t, std::uint32_t key, std::uint32_t state) {
                if (state == WL_KEYBOARD_KEY_STATE_PRESSED)
                    static_cast<WaylandKeyboard*>(data)->Down(serial, key);
                else
                    static_cast<WaylandKeyboard*>(data)->Up(key);
            },
        .modifiers =
            [](void* data, wl_keyboard*, std::uint32_t, std::uint32_t depressed, std::uint32_t latched,
               std::uint32_t locked, std::uint32_t layout) {
                static_cast<WaylandKeyboard*>(data)->m_keymap.SetState(depressed, latched, locked, layout);
            },
        .repeat_info =
            [](void* data, wl_keyboard*, std::int32_t perSecond, std::int32_t delayMs) {
                static_cast<WaylandKeyboard*>(data)->m_repeat.SetRate(perSecond, delayMs);
            },
    };
    wl_keyboard_add_listener(m_keyboard.get(), &kListener, this);
}

void WaylandKeyboard::Down(std::uint32_t serial, std::uint32_t key)
{
    m_lastPress = serial;
    std::string name = m_keymap.NameOf(key);
    if (name.empty() || std::ranges::find(m_held, key, &HeldKey::key) != m_held.end())
        return;
    StrikeMachineKey(name, KeyStroke::Down, m_input.options.keys);
    m_held.push_back({ key, std::move(name) });
    if (!m_keymap.Repeats(key))
        return;
    m_question.reset(); // for another key, or for this one before it went up
    m_repeat.Press(key, kernel::CurrentClock().NowMs());
}

void WaylandKeyboard::Up(std::uint32_t key)
{
    m_repeat.Release(key);
    const auto held = std::ranges::find(m_held, key, &HeldKey::key);
    if (held == m_held.end())
        return;
    StrikeMachineKey(held->name, KeyStroke::Up, m_input.options.keys);
    m_held.erase(held);
}

// Which keys go up from now on, nobody tells.
void WaylandKeyboard::Leave()
{
    m_repeat.Stop();
    for (const HeldKey& held : std::exchange(m_held, {}))
        StrikeMachineKey(held.name, KeyStroke::Up, m_input.options.keys);
    if (std::exchange(m_isHere, false))
        m_input.window.TopLevel().SetKeyboardFocus(false);
}

void WaylandKeyboard::RepeatIfDue(wl_display& display, std::uint64_t nowMs)
{
    static constexpr wl_callback_listener kListener = { [](void* data, wl_callback*, std::uint32_t) {
        static_cast<WaylandKeyboard*>(data)->StrikeAgain();
    } };
    const auto nextMs = NextRepeatMs();
    if (!nextMs || nowMs < *nextMs)
        return;
    m_question.reset(wl_display_sync(&display));
    wl_callback_add_listener(m_question.get(), &kListener, this);
}

// All that the compositor had to say of the keys has been heard.
void WaylandKeyboard::StrikeAgain()
{
    m_question.reset();
    const auto key = m_repeat.TakeDue(kernel::CurrentClock().NowMs());
    const auto held = key ? std::ranges::find(m_held, *key, &HeldKey::key) : m_held.end();
    if (held != m_held.end())
        StrikeMachineKey(held->name, KeyStroke::DownAgain, m_input.options.keys);
}

} // namespace cardsong::display
