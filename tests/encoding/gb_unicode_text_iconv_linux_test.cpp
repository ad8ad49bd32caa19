// gbToUnicode against the C library's own mapping, over every pair of bytes.
#include "encoding/gb_unicode_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iconv.h>
#include <optional>

namespace {

class Gb2312Library {
public:
    Gb2312Library() : m_handle(iconv_open("UTF-16LE", "GB2312")) {}
    ~Gb2312Library() { iconv_close(m_handle); }

    std::optional<unsigned> Character(int lead, int trail)
    {
        char pair[2] = { static_cast<char>(lead), static_cast<char>(trail) };
        unsigned char unit[2] = {};
        char* source = pair;
        char* target = reinterpret_cast<char*>(unit);
        std::size_t sourceBytes = sizeof pair;
        std::size_t targetBytes = sizeof unit;
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(m_handle, &source, &sourceBytes, &target, &targetBytes) != 0 || targetBytes != 0)
            return std::nullopt;
        return unit[0] | static_cast<unsigned>(unit[1]) << 8;
    }

private:
    iconv_t m_handle;
};

TEST(GbToUnicodeMapping, EqualsThePublishedOneOverTheWholeRange)
{
    Gb2312Library library;
    int hanzi = 0;
    for (int lead = 0x80; lead < 0x100; ++lead) {
        for (int trail = 0x01; trail < 0x100; ++trail) {
            const char text[3] = { static_cast<char>(lead), static_cast<char>(trail), 0 };
            Utf16Unit units[2] = {};
            gbToUnicode(text, units);
            const int key = lead * 256 + trail;
            const bool inRange = key >= 0xB0A1 && key <= 0xDDF9;
            const std::optional<unsigned> published = inRange ? library.Character(lead, trail) : std::nullopt;
            if (published) {
                ++hanzi;
                ASSERT_EQ(units[0], *published) << std::hex << key;
                ASSERT_EQ(units[1], 0) << std::hex << key;
            } else {
                ASSERT_EQ(units[0], 0xFF00 + lead) << std::hex << key;
            }
        }
    }
    EXPECT_EQ(hanzi, 4314);
}

} // namespace
