// A strip in a parent window, on a device with a plain skin and a song with a lyrics file.
#pragma once

#include "lyrics/lyrics_strip.h"
#include "tests/gui/skin_fixture.h"
#include "tests/lyrics/settings_key.h"

#include <memory>

namespace cardsong::test {

class StripTest : public ::testing::Test {
protected:
    static constexpr LANGID kEnglish = 1033;

    StripTest() { background = skin.Add("gui_musicplayer_background", 320, 240); }

    // The song's lyrics are these; the context is ready for them.
    void Load(std::string_view lrc)
    {
        skin.Device().WriteFile("card/song.lrc", lrc);
        ASSERT_EQ(context.FindForSong(TEXT("\\SDMMC\\song.mp3")), 1);
    }
    void LoadAndShow(std::string_view lrc)
    {
        Load(lrc);
        strip->Show(parent.Get());
        ParentWindow::Pump();
    }
    bool IsVisible() const { return IsWindowVisible(strip->Window()) != FALSE; }
    LONG WidthOfText(std::string_view ascii) const
    {
        const HDC screen = GetDC(nullptr);
        LOGFONTW description{};
        description.lfHeight = -(18 * GetDeviceCaps(screen, LOGPIXELSY) / 72);
        const UniqueFont font(CreateFontIndirectW(&description));
        SIZE size = {};
        {
            const SelectedObject selected(screen, font.Get());
            GetTextExtentExPointW(screen, Wide(ascii).c_str(), static_cast<int>(ascii.size()), 0, nullptr, nullptr,
                                  &size);
        }
        ReleaseDC(nullptr, screen);
        return size.cx;
    }

    SkinDevice skin;
    SettingsKey key;
    ParentWindow parent;
    LyricsContext context{ kEnglish };
    std::unique_ptr<LyricsStrip> strip = std::make_unique<LyricsStrip>(context);
    std::uint16_t background = 0; // a pixel without text
};

} // namespace cardsong::test
