// A keymap as a compositor sends it.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon.h>

namespace cardsong::test {

// Names of layouts, separated by commas.
inline std::string KeymapText(const char* layouts)
{
    xkb_context* const context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names = { "evdev", "pc105", layouts, "", "" };
    xkb_keymap* const keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    char* const text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
    std::string copy = text;
    std::free(text);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return copy;
}

// A file that holds a text with the zero at its end.
class KeymapFile {
public:
    explicit KeymapFile(const std::string& text)
        : m_file(memfd_create("keymap", MFD_CLOEXEC)), m_sizeBytes(static_cast<std::uint32_t>(text.size()) + 1)
    {
        if (write(m_file, text.c_str(), m_sizeBytes) != static_cast<ssize_t>(m_sizeBytes))
            std::abort();
    }
    explicit KeymapFile(const char* layouts) : KeymapFile(KeymapText(layouts)) {}
    ~KeymapFile() { close(m_file); }
    KeymapFile(const KeymapFile&) = delete;
    KeymapFile& operator=(const KeymapFile&) = delete;
    int File() const { return m_file; }
    std::uint32_t SizeBytes() const { return m_sizeBytes; }

private:
    const int m_file;
    const std::uint32_t m_sizeBytes;
};

} // namespace cardsong::test
