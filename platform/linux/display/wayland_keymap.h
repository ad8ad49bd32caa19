// What the keys of a keyboard are called in the layout in force. Reads what a compositor says of it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct xkb_keymap;
struct xkb_state;

namespace cardsong::display {

// The name of a key symbol, as the tables of keys have it; empty for one that no table could name.
std::string KeyNameOf(std::uint32_t keysym);

class WaylandKeymap {
public:
    // Reads the keymap, `sizeBytes` with the zero at its end, from `file`; closes it. One that cannot be read leaves no
    // key with a name.
    void Load(int file, std::uint32_t sizeBytes);
    // The layout that the user has switched to, as the compositor tells it.
    void SetState(std::uint32_t depressed, std::uint32_t latched, std::uint32_t locked, std::uint32_t layout);
    // `key`: the number that Linux gives it (KEY_...). Shift and the like change no name. Where the layout in force has
    // no name, another of the user's layouts may have one: 'S' is a key of a Cyrillic keyboard, too.
    std::string NameOf(std::uint32_t key) const;
    bool Repeats(std::uint32_t key) const;

private:
    struct Free {
        void operator()(xkb_keymap* keymap) const;
        void operator()(xkb_state* state) const;
    };
    std::unique_ptr<xkb_keymap, Free> m_keymap;
    std::unique_ptr<xkb_state, Free> m_state;
};

} // namespace cardsong::display
