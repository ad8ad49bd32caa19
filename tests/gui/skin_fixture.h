// Skin files of plain colours, each a different one, on a device of their own.
#pragma once

#include "tests/gif/gif_builder.h"
#include "tests/gui/window_fixture.h"
#include "tests/platform/scratch_device.h"

#include <map>
#include <string>

namespace cardsong::test {

// The same pictures are asked for by test after test.
inline const std::string& RememberedPlainGif(unsigned widthPx, unsigned heightPx, GifColor color)
{
    static std::map<std::vector<unsigned>, std::string> s_made;
    std::string& gif = s_made[{ widthPx, heightPx, color.red, color.green, color.blue }];
    if (gif.empty())
        gif = PlainGif(widthPx, heightPx, color);
    return gif;
}

class SkinDevice {
public:
    // Writes "\Windows\<name>.gif", and returns its colour, which no other picture of this device has.
    std::uint16_t Add(const std::string& name, unsigned widthPx = 4, unsigned heightPx = 4)
    {
        const auto found = m_colors.find(name);
        if (found != m_colors.end())
            return found->second;
        const auto number = static_cast<unsigned>(m_colors.size()) + 1;
        const GifColor color{ static_cast<std::uint8_t>((number & 15U) << 4),
                              static_cast<std::uint8_t>((number >> 4) << 4), 0x40 };
        m_device.WriteFile("user/Windows/" + name + ".gif", RememberedPlainGif(widthPx, heightPx, color));
        return m_colors[name] =
                   static_cast<std::uint16_t>((color.red >> 3) << 11 | (color.green >> 2) << 5 | color.blue >> 3);
    }
    // A path for LoadGifBitmap to a plain picture.
    WString Plain(const std::string& name, unsigned widthPx, unsigned heightPx, GifColor color)
    {
        m_device.WriteFile("user/scratch/" + name, PlainGif(widthPx, heightPx, color));
        return m_device.Path(WString(name.begin(), name.end()));
    }
    ScratchDevice& Device() { return m_device; }

private:
    ScratchDevice m_device;
    std::map<std::string, std::uint16_t> m_colors;
};

// An owner-draw request for a button that is drawn into a picture.
inline DRAWITEMSTRUCT DrawRequest(UINT id, UINT action, UINT state, HDC target, const RECT& item)
{
    DRAWITEMSTRUCT request = {};
    request.CtlType = ODT_BUTTON;
    request.CtlID = id;
    request.itemAction = action;
    request.itemState = state;
    request.hDC = target;
    request.rcItem = item;
    return request;
}

} // namespace cardsong::test
