#include "lyrics/lyrics_text.h"

#include "encoding/code_page.h"
#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using cardsong::test::Utf8;

constexpr LANGID kEnglish = 1033;
constexpr const char kGb2312[] = "\xB0\xAE\xB5\xC4\xB8\xE8"; // U+7231 U+7684 U+6B4C
constexpr const char kBig5[] = "\xB7\x52\xAA\xBA\xBA\x71";   // U+611B U+7684 U+6B4C
constexpr const char kUtf8[] = "\xE7\x88\xB1";               // U+7231
constexpr const char kMark[] = "\xEF\xBB\xBF";

LyricsBytes Bytes(std::string_view text)
{
    LyricsBytes bytes(text.begin(), text.end());
    bytes.push_back(0);
    return bytes;
}

std::int32_t PageOf(std::string_view text, std::int32_t codePage, LANGID language,
                    Utf8Detection utf8 = Utf8Detection::Off)
{
    return LyricsCodePage(Bytes(text), codePage, language, utf8);
}

std::string Decoded(std::string_view text, std::int32_t codePage, LANGID language = kEnglish,
                    Utf8Detection utf8 = Utf8Detection::Off)
{
    return Utf8(DecodeLyrics(Bytes(text), codePage, language, utf8));
}

TEST(LyricsCodePage, IsDetectedWhereTheCallerHasNone)
{
    EXPECT_EQ(PageOf(kGb2312, kDetectCodePage, kEnglish), 936);
    EXPECT_EQ(PageOf(kBig5, kDetectCodePage, kEnglish), 950);
    EXPECT_EQ(PageOf("ascii", kDetectCodePage, kEnglish), 0);
}

TEST(LyricsCodePage, TheCallersStands)
{
    EXPECT_EQ(PageOf(kGb2312, 65001, kEnglish), 65001);
    EXPECT_EQ(PageOf(kGb2312, 0, kEnglish), 0);
}

TEST(LyricsCodePage, TheLanguageOfTheUserInterfaceOverridesBoth)
{
    for (const std::int32_t codePage : { kDetectCodePage, 65001, 936, 950, 0 }) {
        EXPECT_EQ(PageOf(kGb2312, codePage, kLanguageTaiwan), 950) << codePage;
        EXPECT_EQ(PageOf(kBig5, codePage, kLanguagePrc), 936) << codePage;
    }
}

TEST(LyricsCodePage, DetectedUtf8ComesBeforeTheLanguage)
{
    for (const LANGID language : { kEnglish, kLanguageTaiwan, kLanguagePrc }) {
        EXPECT_EQ(PageOf(kUtf8, kDetectCodePage, language, Utf8Detection::On), 65001) << language;
        EXPECT_EQ(PageOf("\xEF\xBB\xBF"
                         "ascii",
                         kDetectCodePage, language, Utf8Detection::On),
                  65001)
            << language;
    }
}

TEST(LyricsCodePage, WhatIsNoUtf8BeyondAsciiIsLeftToTheRest)
{
    EXPECT_EQ(PageOf("ascii", kDetectCodePage, kEnglish, Utf8Detection::On), 0);
    EXPECT_EQ(PageOf("ascii", kDetectCodePage, kLanguageTaiwan, Utf8Detection::On), 950);
    EXPECT_EQ(PageOf(kGb2312, kDetectCodePage, kEnglish, Utf8Detection::On), 936);
    EXPECT_EQ(PageOf("", kDetectCodePage, kEnglish, Utf8Detection::On), 0);
}

TEST(DecodeLyrics, EachPageIsConverted)
{
    EXPECT_EQ(Decoded(kGb2312, kDetectCodePage), "\u7231\u7684\u6B4C");
    EXPECT_EQ(Decoded(kBig5, kDetectCodePage), "\u611B\u7684\u6B4C");
    EXPECT_EQ(Decoded(kUtf8, 65001), "\u7231");
    EXPECT_EQ(Decoded("ascii", kDetectCodePage), "ascii");
    EXPECT_EQ(Decoded(kBig5, 65001, kLanguageTaiwan), "\u611B\u7684\u6B4C");
}

TEST(DecodeLyrics, TextEndsAtItsFirstZero)
{
    EXPECT_EQ(Decoded(std::string_view("ab\0cd", 5), 65001), "ab");
    EXPECT_EQ(Decoded("", kDetectCodePage), "");
}

TEST(DecodeLyrics, AnUnknownPageHasNoText)
{
    EXPECT_EQ(Decoded("ascii", 12'345), "");
}

TEST(DecodeLyrics, AByteOrderMarkStaysUnlessUtf8IsLookedFor)
{
    const std::string marked = std::string(kMark) + kUtf8;
    EXPECT_EQ(Decoded(marked, 65001), "\uFEFF\u7231");
    EXPECT_EQ(Decoded(marked, kDetectCodePage, kLanguagePrc, Utf8Detection::On), "\u7231");
    EXPECT_EQ(Decoded(std::string(kUtf8) + kMark, 65001, kEnglish, Utf8Detection::On), "\u7231\uFEFF");
    EXPECT_EQ(Decoded(std::string(kMark) + "a", kDetectCodePage, kEnglish, Utf8Detection::On), "a");
}

TEST(DecodeLyrics, Utf16IsTakenAsItIs)
{
    EXPECT_EQ(Decoded(std::string_view("a\0\x31\x72", 4), kAlreadyUtf16, kLanguageTaiwan), "a\u7231");
    EXPECT_EQ(Decoded(std::string_view("a\0b", 3), kAlreadyUtf16), "ab") << "the zero behind makes the unit whole";
    EXPECT_EQ(Decoded(std::string_view("a\0\0\0b\0", 6), kAlreadyUtf16), "a");
    EXPECT_EQ(Decoded("", kAlreadyUtf16), "");
}

std::string InScript(const char* source, LANGID language)
{
    std::string destination(std::strlen(source) + 1, 'x');
    ConvertToUiScript(destination.data(), source, language);
    EXPECT_EQ(destination.back(), '\0');
    return destination.c_str();
}

TEST(ConvertToUiScript, EachChineseInterfaceGetsItsOwnScript)
{
    EXPECT_EQ(InScript(kGb2312, kLanguageTaiwan), kBig5);
    EXPECT_EQ(InScript(kBig5, kLanguagePrc), kGb2312);
}

TEST(ConvertToUiScript, EverythingElseIsCopied)
{
    EXPECT_EQ(InScript(kGb2312, kLanguagePrc), kGb2312);
    EXPECT_EQ(InScript(kBig5, kLanguageTaiwan), kBig5);
    EXPECT_EQ(InScript(kGb2312, kEnglish), kGb2312);
    EXPECT_EQ(InScript(kBig5, kEnglish), kBig5);
    EXPECT_EQ(InScript("ascii", kLanguageTaiwan), "ascii");
    EXPECT_EQ(InScript("", kLanguagePrc), "");
}

TEST(ConvertToUiScript, ATextIsConvertedInItsPlace)
{
    std::string text = kGb2312;
    ConvertToUiScript(text.data(), text.data(), kLanguageTaiwan);
    EXPECT_EQ(text, kBig5);
    ConvertToUiScript(text.data(), text.data(), kEnglish);
    EXPECT_EQ(text, kBig5);
}

TEST(ConvertToUiScript, NullsChangeNothing)
{
    char text[] = "x";
    ConvertToUiScript(nullptr, text, kEnglish);
    ConvertToUiScript(text, nullptr, kEnglish);
    EXPECT_STREQ(text, "x");
}

} // namespace
