#include "platform/linux/display/wayland_keymap.h"

#include <linux/input-event-codes.h>
#include <unistd.h>
#include <utility>
#include <vector>
#include <xkbcommon/xkbcommon.h>

namespace cardsong::display {

namespace {

constexpr std::uint32_t kLargestKeymap = 4u << 20; // fifty times what a desktop's has
constexpr std::uint32_t kFirstKey = 8;             // what the keymap calls the key that Linux numbers 0

constexpr std::pair<xkb_keysym_t, const char*> kNames[] = {
    { XKB_KEY_Return, "Return" },
    { XKB_KEY_KP_Enter, "Keypad Enter" },
    { XKB_KEY_space, "Space" },
    { XKB_KEY_Tab, "Tab" },
    { XKB_KEY_Escape, "Escape" },
    { XKB_KEY_Left, "Left" },
    { XKB_KEY_Right, "Right" },
    { XKB_KEY_Up, "Up" },
    { XKB_KEY_Down, "Down" },
    { XKB_KEY_Prior, "PageUp" },
    { XKB_KEY_Next, "PageDown" },
    { XKB_KEY_Shift_L, "Left Shift" },
    { XKB_KEY_Shift_R, "Right Shift" },
    { XKB_KEY_XF86AudioPlay, "AudioPlay" },
    { XKB_KEY_XF86AudioStop, "AudioStop" },
    { XKB_KEY_XF86AudioPrev, "AudioPrev" },
    { XKB_KEY_XF86AudioNext, "AudioNext" },
};

std::string FunctionKey(std::uint32_t number)
{
    return "F" + std::to_string(number);
}

// The text of the whole keymap; empty when there is less than that in the file. It is copied: whoever sent the file can
// still make it shorter, and mapped memory would end the process then.
std::string ReadText(int file, std::uint32_t sizeBytes)
{
    if (sizeBytes == 0 || sizeBytes > kLargestKeymap)
        return {};
    std::string text(sizeBytes, '\0');
    std::size_t count = 0;
    while (count < text.size()) {
        const ssize_t got = pread(file, text.data() + count, text.size() - count, static_cast<off_t>(count));
        if (got <= 0)
            return {};
        count += static_cast<std::size_t>(got);
    }
    return text.c_str(); // up to the zero
}

std::string NameIn(xkb_keymap& keymap, xkb_keycode_t code, xkb_layout_index_t layout)
{
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(&keymap, code, layout, 0, &symbols);
    return count == 1 ? KeyNameOf(symbols[0]) : std::string();
}

} // namespace

std::string KeyNameOf(std::uint32_t keysym)
{
    for (const auto& [known, name] : kNames) {
        if (known == keysym)
            return name;
    }
    if (keysym >= XKB_KEY_F1 && keysym <= XKB_KEY_F24)
        return FunctionKey(keysym - XKB_KEY_F1 + 1);
    if (keysym >= XKB_KEY_a && keysym <= XKB_KEY_z)
        return std::string(1, static_cast<char>(keysym - XKB_KEY_a + 'A'));
    return keysym > ' ' && keysym < 0x7F ? std::string(1, static_cast<char>(keysym)) : std::string();
}

void WaylandKeymap::Free::operator()(xkb_keymap* keymap) const
{
    xkb_keymap_unref(keymap);
}

void WaylandKeymap::Free::operator()(xkb_state* state) const
{
    xkb_state_unref(state);
}

void WaylandKeymap::Load(int file, std::uint32_t sizeBytes)
{
    const std::string text = ReadText(file, sizeBytes);
    close(file);
    m_state.reset();
    m_keymap.reset();
    xkb_context* const context = xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES); // the text is complete
    if (context == nullptr)
        return;
    xkb_context_set_log_level(context, XKB_LOG_LEVEL_CRITICAL);
    m_keymap.reset(
        xkb_keymap_new_from_string(context, text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    xkb_context_unref(context); // the keymap keeps what it needs
    if (m_keymap)
        m_state.reset(xkb_state_new(m_keymap.get()));
}

void WaylandKeymap::SetState(std::uint32_t depressed, std::uint32_t latched, std::uint32_t locked, std::uint32_t layout)
{
    if (m_state)
        xkb_state_update_mask(m_state.get(), depressed, latched, locked, 0, 0, layout);
}

std::string WaylandKeymap::NameOf(std::uint32_t key) const
{
    if (!m_state || key > UINT32_MAX - kFirstKey)
        return {};
    const xkb_keycode_t code = key + kFirstKey;
    const xkb_layout_index_t layout = xkb_state_key_get_layout(m_state.get(), code);
    std::string name = NameIn(*m_keymap, code, layout);
    const xkb_layout_index_t count = xkb_keymap_num_layouts_for_key(m_keymap.get(), code);
    for (xkb_layout_index_t other = 0; other < count && name.empty(); ++other)
        name = NameIn(*m_keymap, code, other);
    // Keymaps call the last function keys something else, or nothing.
    if (name.empty() && key >= KEY_F13 && key <= KEY_F24)
        name = FunctionKey(key - KEY_F13 + 13);
    return name;
}

bool WaylandKeymap::Repeats(std::uint32_t key) const
{
    return m_keymap && key <= UINT32_MAX - kFirstKey && xkb_keymap_key_repeats(m_keymap.get(), key + kFirstKey) == 1;
}

} // namespace cardsong::display
