// The conversions between Big5 and GB2312 against the C library's own, over every pair of bytes.
#include "encoding/big5_text.h"

#include <gtest/gtest.h>

#include <iconv.h>
#include <string>

namespace {

class Library {
public:
    Library(const char* source, const char* target) : m_handle(iconv_open(target, source)) {}
    ~Library() { iconv_close(m_handle); }

    bool IsOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

    // Empty when the library has no counterpart.
    std::string operator()(std::string text) const
    {
        char converted[16] = {};
        char* source = text.data();
        char* target = converted;
        std::size_t sourceBytes = text.size();
        std::size_t targetBytes = sizeof converted;
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(m_handle, &source, &sourceBytes, &target, &targetBytes) != 0 || sourceBytes != 0)
            return {};
        return { converted, sizeof converted - targetBytes };
    }

private:
    iconv_t m_handle;
};

// A set as the tables see it, and the library's ways from it to the other.
struct Set {
    const char* name;
    const char* other;
    int lastLead;
    int firstTrail;
    std::string square;
    int direct;      // codes that the library pairs with a code of the other set
    int byCharacter; // more codes, of characters that the other set holds too
};

void ExpectTheLibrarysPairs(const Set& set, void (*convert)(const char*, char*))
{
    const Library directly(set.name, set.other);
    const Library toUnicode(set.name, "UTF-8");
    const Library fromUnicode("UTF-8", set.other);
    ASSERT_TRUE(directly.IsOpen() && toUnicode.IsOpen() && fromUnicode.IsOpen());
    int direct = 0;
    int byCharacter = 0;
    for (int lead = 0xA1; lead <= set.lastLead; ++lead) {
        for (int trail = set.firstTrail; trail <= 0xFE; ++trail) {
            if (std::string(set.name) == "GB2312" && lead >= 0xAA && lead <= 0xAF)
                continue; // free, and without a row
            const std::string code{ static_cast<char>(lead), static_cast<char>(trail) };
            std::string expected = directly(code);
            direct += expected.empty() ? 0 : 1;
            if (expected.empty() && !toUnicode(code).empty()) {
                expected = fromUnicode(toUnicode(code));
                byCharacter += expected.empty() ? 0 : 1;
            }
            char converted[3] = {};
            convert(code.c_str(), converted);
            ASSERT_EQ(std::string(converted, 2), expected.empty() ? set.square : expected)
                << std::hex << lead << ' ' << trail;
        }
    }
    EXPECT_EQ(direct, set.direct);
    EXPECT_EQ(byCharacter, set.byCharacter);
}

TEST(Big5ToGbMapping, EqualsTheLibrarysOverAllCodes)
{
    ExpectTheLibrarysPairs({ "BIG5", "GB2312", 0xF9, 0x40, "\xA1\xF5", 7346, 2 }, Big5ToGb);
}

TEST(GbToBig5Mapping, EqualsTheLibrarysOverAllCodes)
{
    ExpectTheLibrarysPairs({ "GB2312", "BIG5", 0xF7, 0xA1, "\xA1\xBC", 6846, 0 }, GbToBig5);
}

} // namespace
