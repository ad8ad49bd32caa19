#include "platform/ce.h"

#include <gtest/gtest.h>

#include <string>

namespace {

WString Wide(UINT codePage, const std::string& bytes, DWORD flags = 0)
{
    WCHAR buffer[64];
    const int units = MultiByteToWideChar(codePage, flags, bytes.data(), static_cast<int>(bytes.size()), buffer, 64);
    return WString(buffer, static_cast<std::size_t>(units));
}

std::string Narrow(UINT codePage, const WString& text)
{
    char buffer[64];
    const int bytes =
        WideCharToMultiByte(codePage, 0, text.data(), static_cast<int>(text.size()), buffer, 64, nullptr, nullptr);
    return std::string(buffer, static_cast<std::size_t>(bytes));
}

constexpr DWORD kInvalidParameter = ERROR_INVALID_PARAMETER;

TEST(MultiByte, ChineseOfThePrcIsConverted)
{
    EXPECT_EQ(Wide(936, "a\xB8\xE8\xC7\xFA"), TEXT("a\u6B4C\u66F2"));
}

TEST(MultiByte, ChineseOfTaiwanIsConverted)
{
    EXPECT_EQ(Wide(950, "\xBA\x71\xA6\xB1!"), TEXT("\u6B4C\u66F2!"));
}

TEST(MultiByte, Utf8IsConverted)
{
    EXPECT_EQ(Wide(CP_UTF8, "\xE6\xAD\x8C\xF0\x9F\x8E\xB5"), TEXT("\u6B4C\U0001F3B5"));
}

TEST(MultiByte, InvalidUtf8BecomesTheReplacementCharacter)
{
    EXPECT_EQ(Wide(CP_UTF8, "a\xFF"
                            "b"),
              TEXT("a\uFFFDb"));
}

TEST(MultiByte, InvalidUtf8IsAnErrorWhereThatIsAskedFor)
{
    WCHAR buffer[8];
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "a\xFF", 2, buffer, 8), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION));
}

// Each of these is one step inside the ranges that the Unicode Standard allows, or one step outside.
TEST(MultiByte, TheEdgesOfUtf8AreKept)
{
    const auto isValid = [](const std::string& bytes) {
        WCHAR buffer[8];
        return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()), buffer,
                                   8) != 0;
    };
    for (const auto* const bytes :
         { "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xE1\x80\x80", "\xEC\xBF\xBF", "\xED\x9F\xBF", "\xEE\x80\x80",
           "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF1\x80\x80\x80", "\xF3\xBF\xBF\xBF", "\xF4\x8F\xBF\xBF" })
        EXPECT_TRUE(isValid(bytes)) << bytes;
    for (const auto* const bytes :
         { "\x80", "\xBF", "\xC1\xBF", "\xC2\x7F", "\xC2\xC0", "\xDF\x7F", "\xE0\x9F\xBF", "\xE1\x7F\x80",
           "\xE1\x80\x7F", "\xE1\x80\xC0", "\xED\xA0\x80", "\xED\xBF\xBF", "\xEF\xC0\x80", "\xF0\x8F\xBF\xBF",
           "\xF1\xC0\x80\x80", "\xF1\x80\xC0\x80", "\xF1\x80\x80\xC0", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80" })
        EXPECT_FALSE(isValid(bytes)) << bytes;
}

TEST(MultiByte, ALoneLeadByteAtTheEndIsAQuestionMark)
{
    EXPECT_EQ(Wide(936, "a\xB8"), TEXT("a?"));
    EXPECT_EQ(MultiByteToWideChar(936, 0, "a\xB8", 2, nullptr, 0), 2);
}

TEST(MultiByte, ALoneLeadByteIsAnErrorWhereThatIsAskedFor)
{
    WCHAR buffer[8];
    EXPECT_EQ(MultiByteToWideChar(936, MB_ERR_INVALID_CHARS, "a\xB8", 2, buffer, 8), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION));
}

TEST(MultiByte, ALeadByteDoesNotSwallowTheZero)
{
    WCHAR buffer[8];
    ASSERT_EQ(MultiByteToWideChar(936, 0, "a\xB8", -1, buffer, 8), 3);
    EXPECT_EQ(WString(buffer), TEXT("a?"));
}

// A pair that cannot be is one question mark, whatever its second byte.
TEST(MultiByte, AWrongPairIsOneQuestionMark)
{
    EXPECT_EQ(Wide(936, "\xB8 z"), TEXT("?z"));
    EXPECT_EQ(Wide(936, "\xB8\xFF"), TEXT("?"));
    EXPECT_EQ(Wide(950, "\xA4 z"), TEXT("?z"));
    EXPECT_EQ(Wide(950, "a\xA4"), TEXT("a?"));
    EXPECT_EQ(Wide(936, std::string("\xB8\0z", 3)), WString(TEXT("?\0z"), 3));
}

TEST(MultiByte, BytesOutsideTheSchemeAreSingle)
{
    EXPECT_EQ(Wide(936, "\xFF"), TEXT("\uF8F5"));
    EXPECT_EQ(Wide(950, "\x80\xFF"), TEXT("\u0080\uF8F8"));
    EXPECT_EQ(Wide(1252, "\x81\x80"), TEXT("\u0081\u20AC"));
}

TEST(MultiByte, ACutUtf8SequenceIsOneReplacementCharacter)
{
    EXPECT_EQ(Wide(CP_UTF8, "\xE6\xAD"), TEXT("\uFFFD"));
    EXPECT_EQ(Wide(CP_UTF8, "\xF0\x9F\x8E"
                            "b"),
              TEXT("\uFFFD"
                   "b"));
    EXPECT_EQ(Wide(CP_UTF8, "\xC0\xAF"), TEXT("\uFFFD\uFFFD"));
}

TEST(MultiByte, WithoutALengthTheZeroIsConvertedToo)
{
    WCHAR buffer[8];
    EXPECT_EQ(MultiByteToWideChar(936, 0, "abc", -1, buffer, 8), 4);
    EXPECT_EQ(WString(buffer), TEXT("abc"));
}

TEST(MultiByte, WithoutABufferTheUnitsAreCounted)
{
    EXPECT_EQ(MultiByteToWideChar(936, 0, "a\xB8\xE8\xC7\xFA", 5, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xF0\x9F\x8E\xB5", -1, nullptr, 0), 3);
}

TEST(MultiByte, ABufferTooSmallIsAnError)
{
    WCHAR buffer[2];
    EXPECT_EQ(MultiByteToWideChar(936, 0, "abc", 3, buffer, 2), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
}

TEST(MultiByte, NoSourceOrNoLengthIsAnError)
{
    WCHAR buffer[2];
    EXPECT_EQ(MultiByteToWideChar(936, 0, nullptr, 3, buffer, 2), 0);
    EXPECT_EQ(GetLastError(), kInvalidParameter);
    SetLastError(0);
    EXPECT_EQ(MultiByteToWideChar(936, 0, "abc", 0, buffer, 2), 0);
    EXPECT_EQ(GetLastError(), kInvalidParameter);
}

TEST(MultiByte, AnUnknownPageIsAnError)
{
    WCHAR buffer[2];
    EXPECT_EQ(MultiByteToWideChar(12345, 0, "a", 1, buffer, 2), 0);
    EXPECT_EQ(GetLastError(), kInvalidParameter);
}

TEST(MultiByte, TheEuroOfThePrcPageIsASingleByte)
{
    EXPECT_EQ(Wide(936, "\x80"), TEXT("\u20AC"));
}

TEST(MultiByte, LongTextIsConvertedWhole)
{
    std::string bytes;
    for (int i = 0; i < 5000; ++i)
        bytes += "\xB8\xE8";
    WString text(5000, TEXT(' '));
    EXPECT_EQ(MultiByteToWideChar(936, 0, bytes.data(), 10000, text.data(), 5000), 5000);
    EXPECT_EQ(text, WString(5000, TEXT('\u6B4C')));
}

TEST(WideChar, ChineseIsConvertedBack)
{
    EXPECT_EQ(Narrow(936, TEXT("a\u6B4C\u66F2")), "a\xB8\xE8\xC7\xFA");
    EXPECT_EQ(Narrow(950, TEXT("\u6B4C\u66F2!")), "\xBA\x71\xA6\xB1!");
    EXPECT_EQ(Narrow(CP_UTF8, TEXT("\u6B4C")), "\xE6\xAD\x8C");
}

TEST(WideChar, WhatThePageLacksIsTheDefaultCharacter)
{
    char buffer[8];
    BOOL usedDefault = FALSE;
    EXPECT_EQ(WideCharToMultiByte(950, 0, TEXT("a\u0E01z"), 3, buffer, 8, "_", &usedDefault), 3);
    EXPECT_EQ(std::string(buffer, 3), "a_z");
    EXPECT_TRUE(usedDefault);
    EXPECT_EQ(WideCharToMultiByte(950, 0, TEXT("abc"), 3, buffer, 8, "_", &usedDefault), 3);
    EXPECT_FALSE(usedDefault);
}

TEST(WideChar, Utf8LacksNothingButHalfPairs)
{
    char buffer[8];
    BOOL usedDefault = TRUE;
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, TEXT("a"), 1, buffer, 8, nullptr, &usedDefault), 1);
    EXPECT_FALSE(usedDefault);
    const WCHAR half = 0xD800;
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, &half, 1, buffer, 8, "_", &usedDefault), 3);
    EXPECT_EQ(std::string(buffer, 3), "\xEF\xBF\xBD");
    EXPECT_TRUE(usedDefault);
}

TEST(WideChar, Utf8TakesAsManyBytesAsACharacterNeeds)
{
    const struct {
        WCHAR unit;
        std::string bytes;
    } rows[] = { { 0x7F, "\x7F" },
                 { 0x80, "\xC2\x80" },
                 { 0x7FF, "\xDF\xBF" },
                 { 0x800, "\xE0\xA0\x80" },
                 { 0xFFFD, "\xEF\xBF\xBD" } };
    for (const auto& row : rows) {
        char buffer[8] = {};
        const int size = WideCharToMultiByte(CP_UTF8, 0, &row.unit, 1, buffer, 8, nullptr, nullptr);
        EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(size)), row.bytes);
    }
}

TEST(WideChar, BytesAreCountedAndSmallBuffersRefused)
{
    EXPECT_EQ(WideCharToMultiByte(936, 0, TEXT("\u6B4C"), -1, nullptr, 0, nullptr, nullptr), 3);
    char buffer[2];
    EXPECT_EQ(WideCharToMultiByte(936, 0, TEXT("abc"), 3, buffer, 2, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
}

TEST(LowerCase, LettersOfManyScriptsAreLowered)
{
    WCHAR text[] = TEXT("SONG \u00C9\u0410\u0391\uFF21 \u6B4C 1\u00D7\u00DF");
    const auto units = static_cast<DWORD>(wcslen(text));
    EXPECT_EQ(CharLowerBuffW(text, units), units);
    EXPECT_EQ(WString(text), TEXT("song \u00E9\u0430\u03B1\uFF41 \u6B4C 1\u00D7\u00DF"));
}

TEST(LowerCase, OnlyTheGivenUnitsChange)
{
    WCHAR text[] = TEXT("ABCD");
    EXPECT_EQ(CharLowerBuffW(text, 2), 2U);
    EXPECT_EQ(WString(text), TEXT("abCD"));
}

} // namespace
