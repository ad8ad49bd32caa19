#include "platform/linux/display/wayland_keymap.h"

#include "platform/host/device_keys.h"
#include "tests/platform/display/keymap_file.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <set>

namespace {

using cardsong::display::KeyNameOf;
using cardsong::display::WaylandKeymap;
using cardsong::test::KeymapFile;

WaylandKeymap KeymapOf(const char* layouts)
{
    const KeymapFile file(layouts);
    WaylandKeymap keymap;
    keymap.Load(dup(file.File()), file.SizeBytes());
    return keymap;
}

TEST(WaylandKeymap, CallsTheKeysAsTheTablesDo)
{
    const std::pair<std::uint32_t, const char*> keys[] = {
        { KEY_ENTER, "Return" },
        { KEY_KPENTER, "Keypad Enter" },
        { KEY_SPACE, "Space" },
        { KEY_TAB, "Tab" },
        { KEY_ESC, "Escape" },
        { KEY_LEFT, "Left" },
        { KEY_RIGHT, "Right" },
        { KEY_UP, "Up" },
        { KEY_DOWN, "Down" },
        { KEY_PAGEUP, "PageUp" },
        { KEY_PAGEDOWN, "PageDown" },
        { KEY_LEFTSHIFT, "Left Shift" },
        { KEY_RIGHTSHIFT, "Right Shift" },
        { KEY_PLAYPAUSE, "AudioPlay" },
        { KEY_STOPCD, "AudioStop" },
        { KEY_PREVIOUSSONG, "AudioPrev" },
        { KEY_NEXTSONG, "AudioNext" },
        { KEY_Q, "Q" },
        { KEY_Z, "Z" },
        { KEY_1, "1" },
        { KEY_4, "4" },
        { KEY_COMMA, "," },
        { KEY_DOT, "." },
        { KEY_F1, "F1" },
        { KEY_F7, "F7" },
        { KEY_F12, "F12" },
        { KEY_F24, "F24" },
    };
    const WaylandKeymap keymap = KeymapOf("us");
    for (const auto& [key, name] : keys)
        EXPECT_EQ(keymap.NameOf(key), name) << key;
}

TEST(WaylandKeymap, KnowsAKeyForEveryKeyOfTheDevice)
{
    const WaylandKeymap keymap = KeymapOf("us");
    std::set<std::string> names;
    for (std::uint32_t key = 0; key < KEY_MAX; ++key)
        names.insert(keymap.NameOf(key));
    for (const auto& known : cardsong::host::DeviceKeys()) {
        for (const std::string_view name : known.machineKeys) {
            EXPECT_TRUE(name.empty() || names.contains(std::string(name))) << name;
        }
    }
}

TEST(WaylandKeymap, FollowsTheLayout)
{
    EXPECT_EQ(KeymapOf("fr").NameOf(KEY_A), "Q");
    EXPECT_EQ(KeymapOf("de").NameOf(KEY_Y), "Z");
    WaylandKeymap both = KeymapOf("us,de");
    EXPECT_EQ(both.NameOf(KEY_Y), "Y");
    both.SetState(0, 0, 0, 1);
    EXPECT_EQ(both.NameOf(KEY_Y), "Z");
}

TEST(WaylandKeymap, TakesTheNameOfAnotherLayoutForAKeyOfAForeignScript)
{
    WaylandKeymap keymap = KeymapOf("ru,us");
    EXPECT_EQ(keymap.NameOf(KEY_S), "S");
    EXPECT_EQ(KeymapOf("ru").NameOf(KEY_S), "");
}

TEST(WaylandKeymap, RepeatsKeysAndNoModifiers)
{
    const WaylandKeymap keymap = KeymapOf("us");
    EXPECT_TRUE(keymap.Repeats(KEY_RIGHT));
    EXPECT_FALSE(keymap.Repeats(KEY_LEFTSHIFT));
    EXPECT_FALSE(keymap.Repeats(0xFFFFFFFF));
    EXPECT_FALSE(WaylandKeymap().Repeats(KEY_RIGHT));
}

TEST(WaylandKeymap, HasNoNamesBeforeItIsLoaded)
{
    WaylandKeymap keymap;
    keymap.SetState(1, 1, 1, 1);
    EXPECT_EQ(keymap.NameOf(KEY_S), "");
}

TEST(WaylandKeymap, NamesNoSymbolThatIsNoKeyOfTheTables)
{
    for (const std::uint32_t keysym : { 0U, 0x20ACU, 0x7FU, 0x6D3U, 0xFFFFFFFFU, 0x1000041U })
        EXPECT_EQ(KeyNameOf(keysym), "") << keysym;
}

} // namespace
