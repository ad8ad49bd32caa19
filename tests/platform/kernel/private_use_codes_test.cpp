// The codes of pages 936 and 950 that the user may define: each stands for a private-use character of Unicode.
#include "platform/ce.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using cardsong::test::IsWine;

std::string Pair(unsigned code)
{
    return { static_cast<char>(code >> 8), static_cast<char>(code & 0xFF) };
}

// What the bytes are as text; empty when they are refused.
WString Wide(UINT page, const std::string& bytes, DWORD flags = 0)
{
    WCHAR buffer[64];
    const int units = MultiByteToWideChar(page, flags, bytes.data(), static_cast<int>(bytes.size()), buffer, 64);
    return WString(buffer, static_cast<std::size_t>(units));
}

std::string Narrow(UINT page, const WString& text, BOOL& usedDefault)
{
    char buffer[64];
    const int bytes =
        WideCharToMultiByte(page, 0, text.data(), static_cast<int>(text.size()), buffer, 64, nullptr, &usedDefault);
    return std::string(buffer, static_cast<std::size_t>(bytes));
}

struct Trails {
    unsigned first;
    unsigned last;
};

// Every code of the leads and trails, one lead after the other, is one character further on.
void ExpectArea(UINT page, unsigned firstLead, unsigned lastLead, const std::vector<Trails>& trails, unsigned unit)
{
    for (unsigned lead = firstLead; lead <= lastLead; ++lead) {
        for (const Trails& run : trails) {
            for (unsigned trail = run.first; trail <= run.last; ++trail, ++unit) {
                const unsigned code = lead << 8 | trail;
                const WString character(1, static_cast<WCHAR>(unit));
                ASSERT_EQ(Wide(page, Pair(code)), character) << std::hex << code;
                ASSERT_EQ(Wide(page, Pair(code), MB_ERR_INVALID_CHARS), character) << std::hex << code;
                BOOL usedDefault = TRUE;
                ASSERT_EQ(Narrow(page, character, usedDefault), Pair(code)) << std::hex << unit;
                ASSERT_FALSE(usedDefault) << std::hex << unit;
            }
        }
    }
}

TEST(PrivateUseCodes, OfThePrcPageFillTheRowsWithoutCharacters)
{
    ExpectArea(936, 0xAA, 0xAF, { { 0xA1, 0xFE } }, 0xE000);
    ExpectArea(936, 0xF8, 0xFE, { { 0xA1, 0xFE } }, 0xE234);
    ExpectArea(936, 0xA1, 0xA7, { { 0x40, 0x7E }, { 0x80, 0xA0 } }, 0xE4C6);
}

TEST(PrivateUseCodes, OfThePrcPageFillTheHolesOfItsRowsToo)
{
    unsigned unit = 0xE766;
    const struct {
        unsigned firstCode;
        unsigned lastCode;
    } holes[] = { { 0xA2AB, 0xA2B0 }, { 0xA2E3, 0xA2E4 }, { 0xA2EF, 0xA2F0 }, { 0xA2FD, 0xA2FE }, { 0xA4F4, 0xA4FE },
                  { 0xA5F7, 0xA5FE }, { 0xA6B9, 0xA6C0 }, { 0xA6D9, 0xA6DF }, { 0xA6EC, 0xA6ED }, { 0xA6F3, 0xA6F3 },
                  { 0xA6F6, 0xA6FE }, { 0xA7C2, 0xA7D0 }, { 0xA7F2, 0xA7FE }, { 0xA896, 0xA8A0 }, { 0xA8BC, 0xA8BC },
                  { 0xA8BF, 0xA8BF }, { 0xA8C1, 0xA8C4 }, { 0xA8EA, 0xA8FE }, { 0xA958, 0xA958 }, { 0xA95B, 0xA95B },
                  { 0xA95D, 0xA95F }, { 0xA989, 0xA995 }, { 0xA997, 0xA9A3 }, { 0xA9F0, 0xA9FE }, { 0xD7FA, 0xD7FE },
                  { 0xFE50, 0xFE7E }, { 0xFE80, 0xFEA0 } };
    for (const auto& hole : holes) {
        ExpectArea(936, hole.firstCode >> 8, hole.firstCode >> 8, { { hole.firstCode & 0xFF, hole.lastCode & 0xFF } },
                   unit);
        unit += hole.lastCode - hole.firstCode + 1;
    }
    EXPECT_EQ(unit, 0xE865u);
}

TEST(PrivateUseCodes, OfTheTaiwanPageFillTheRowsBesideItsCharacters)
{
    const std::vector<Trails> all = { { 0x40, 0x7E }, { 0xA1, 0xFE } };
    ExpectArea(950, 0xFA, 0xFE, all, 0xE000);
    ExpectArea(950, 0x8E, 0xA0, all, 0xE311);
    ExpectArea(950, 0x81, 0x8D, all, 0xEEB8);
    ExpectArea(950, 0xC6, 0xC6, { { 0xA1, 0xFE } }, 0xF6B1);
    ExpectArea(950, 0xC7, 0xC8, all, 0xF70F);
}

int CountPrivatePairs(UINT page)
{
    int count = 0;
    for (unsigned code = 0x8100; code <= 0xFEFF; ++code) {
        const WString text = (code & 0xFF) != 0 ? Wide(page, Pair(code)) : WString();
        if (text.size() == 1 && text[0] >= 0xE000 && text[0] <= 0xF8FF)
            ++count;
    }
    return count;
}

TEST(PrivateUseCodes, AreNoMoreThanThese)
{
    EXPECT_EQ(CountPrivatePairs(936), 6 * 94 + 7 * 94 + 7 * 96 + 0xE865 - 0xE766);
    EXPECT_EQ(CountPrivatePairs(950), (5 + 19 + 13 + 2) * 157 + 94);
}

TEST(PrivateUseCodes, StandBetweenOtherText)
{
    EXPECT_EQ(Wide(936, "a\xAA\xA1\xAA\xA2\xB8\xE8\xF8\xA1z"), TEXT("a\uE000\uE001\u6B4C\uE234z"));
    EXPECT_EQ(Wide(950, "a\xC6\xA1\xBA\x71\xFA\x40\x81\x40z"), TEXT("a\uF6B1\u6B4C\uE000\uEEB8z"));
    BOOL usedDefault = TRUE;
    EXPECT_EQ(Narrow(936, TEXT("a\uE000\u6B4C\uE234z"), usedDefault), "a\xAA\xA1\xB8\xE8\xF8\xA1z");
    EXPECT_FALSE(usedDefault);
    EXPECT_EQ(Narrow(950, TEXT("a\uF6B1\u6B4C\uE000z"), usedDefault), "a\xC6\xA1\xBA\x71\xFA\x40z");
    EXPECT_FALSE(usedDefault);
}

// The bytes of two neighbours may look like a private code.
TEST(PrivateUseCodes, AreLookedForOnlyWhereAPairBegins)
{
    EXPECT_EQ(Wide(936, "\xB8\xE8\xC7\xFA\xA2\xA1"), TEXT("\u6B4C\u66F2\u2170")); // FAA2 between them
    EXPECT_EQ(Wide(950, "\xA4\xC6\xA1\x41"), TEXT("\u5316\uFF0C"));               // C6A1 between them
    EXPECT_EQ(Wide(950, "\xA4 \xC6\xA1"), TEXT("?\uF6B1"));                       // a wrong pair before it
    EXPECT_EQ(Wide(950, "\xFF\xC6\xA1\x80\xC6\xA1"), TEXT("\uF8F8\uF6B1\u0080\uF6B1"));
    EXPECT_EQ(Wide(950, std::string("\xC6\0\xC6\xA1", 4)), WString(TEXT("?\0\uF6B1"), 3));
}

TEST(PrivateUseCodes, TheirNeighboursAreCharacters)
{
    EXPECT_EQ(Wide(936, "\xA2\xAA\xA2\xB1"), TEXT("\u2179\u2488"));
    EXPECT_EQ(Wide(936, "\xA9\xA4\xF7\xFE"), TEXT("\u2500\u9F44"));
    EXPECT_EQ(Wide(950, "\xC6\x7E\xC9\x40"), TEXT("\u7C72\u4E42"));
    EXPECT_EQ(Wide(950, "\xF9\xFE\xA1\x40"), TEXT("\u2593\u3000"));
}

TEST(PrivateUseCodes, CutInTheMiddleAreAQuestionMark)
{
    EXPECT_EQ(Wide(936, "\xAA\xA1\xAA"), TEXT("\uE000?"));
    EXPECT_EQ(Wide(950, "\xC6\xA1\xC6"), TEXT("\uF6B1?"));
    EXPECT_EQ(Wide(950, "\xC6\xA1\xC6", MB_ERR_INVALID_CHARS), TEXT(""));
}

TEST(PrivateUseCodes, WithoutACodeAreTheDefaultCharacter)
{
    BOOL usedDefault = FALSE;
    EXPECT_EQ(Narrow(936, TEXT("\uE865z"), usedDefault), "?z");
    EXPECT_TRUE(usedDefault);
    usedDefault = FALSE;
    EXPECT_EQ(Narrow(950, TEXT("\uF849z"), usedDefault), "?z");
    EXPECT_TRUE(usedDefault);
}

TEST(PrivateUseCodes, TheByte0xFFIsAnErrorWhereThatIsAskedFor)
{
    if (IsWine())
        GTEST_SKIP() << "Wine lets 0xFF pass";
    for (const UINT page : { 936U, 950U }) {
        SetLastError(0);
        EXPECT_EQ(Wide(page, "a\xFFz", MB_ERR_INVALID_CHARS), TEXT("")) << page;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION)) << page;
    }
    EXPECT_EQ(Wide(936, "a\xFFz"), TEXT("a\uF8F5z"));
    EXPECT_EQ(Wide(950, "a\xFFz"), TEXT("a\uF8F8z"));
}

TEST(PrivateUseCodes, TheByte0x80IsNoError)
{
    EXPECT_EQ(Wide(936, "\x80", MB_ERR_INVALID_CHARS), TEXT("\u20AC"));
    EXPECT_EQ(Wide(950, "\x80", MB_ERR_INVALID_CHARS), TEXT("\u0080"));
}

} // namespace
