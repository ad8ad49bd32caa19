#include "platform/ce.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <string>

namespace {

WString Format(const WCHAR* format, ...)
{
    WCHAR buffer[512];
    va_list arguments;
    va_start(arguments, format);
    const int units = _vsnwprintf(buffer, 512, format, arguments);
    va_end(arguments);
    return WString(buffer, static_cast<std::size_t>(units));
}

// Returns the result of formatting into `units` units of a buffer filled with "x".
int FormatInto(WString& buffer, std::size_t units, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = _vsnwprintf(buffer.data(), units, format, arguments);
    va_end(arguments);
    return result;
}

TEST(TextFormat, NumbersAreWritten)
{
    EXPECT_EQ(Format(TEXT("%d %i %u"), -5, 7, 4000000000U), TEXT("-5 7 4000000000"));
    EXPECT_EQ(Format(TEXT("%x %X %#x %#X"), 0xBEEFU, 0xBEEFU, 255U, 255U), TEXT("beef BEEF 0xff 0XFF"));
    EXPECT_EQ(Format(TEXT("%ld %lu"), LONG{ -1 }, DWORD{ 0xFFFFFFFF }), TEXT("-1 4294967295"));
    EXPECT_EQ(Format(TEXT("%I64d"), 1234567890123LL), TEXT("1234567890123"));
}

TEST(TextFormat, WidthsAndPrecisionsAreKept)
{
    EXPECT_EQ(Format(TEXT("%02d:%02d"), 5, 59), TEXT("05:59"));
    EXPECT_EQ(Format(TEXT("%04x"), 0x404U), TEXT("0404"));
    EXPECT_EQ(Format(TEXT("[%-5d][%5d][%+d]"), 42, 42, 42), TEXT("[42   ][   42][+42]"));
    EXPECT_EQ(Format(TEXT("%.3d|%5.3d|%-5.3d|"), 7, 7, 7), TEXT("007|  007|007  |"));
    EXPECT_EQ(Format(TEXT("%*d|%-*d|"), 4, 1, 4, 1), TEXT("   1|1   |"));
    EXPECT_EQ(Format(TEXT("%05d"), -42), TEXT("-0042"));
}

TEST(TextFormat, TextIsWritten)
{
    EXPECT_EQ(Format(TEXT("%s|%ls|%S|%hs"), TEXT("wide"), TEXT("long"), "narrow", "half"),
              TEXT("wide|long|narrow|half"));
    EXPECT_EQ(Format(TEXT("[%-5s][%5s][%.3s]"), TEXT("ab"), TEXT("ab"), TEXT("abcdef")), TEXT("[ab   ][   ab][abc]"));
    EXPECT_EQ(Format(TEXT("[%.2S][%.9S]"), "narrow", "half"), TEXT("[na][half]"));
    EXPECT_EQ(Format(TEXT("%c%c"), TEXT('a'), TEXT('\u6B4C')), TEXT("a\u6B4C"));
    EXPECT_EQ(Format(TEXT("100%%")), TEXT("100%"));
}

TEST(TextFormat, ThePrecisionEndsTextThatHasNoZero)
{
    const WCHAR units[3] = { TEXT('a'), TEXT('b'), TEXT('c') };
    EXPECT_EQ(Format(TEXT("%.3s"), units), TEXT("abc"));
}

TEST(TextFormat, NullTextIsNamed)
{
    EXPECT_EQ(Format(TEXT("%s"), static_cast<const WCHAR*>(nullptr)), TEXT("(null)"));
}

TEST(TextFormat, OfAnUnknownConversionTheLetterStands)
{
    EXPECT_EQ(Format(TEXT("%y|%d"), 7), TEXT("y|7"));
    EXPECT_EQ(Format(TEXT("%5y|%-.3y|%l5"), 7), TEXT("y|y|5"));
    EXPECT_EQ(Format(TEXT("a%")), TEXT("a"));
    EXPECT_EQ(Format(TEXT("a%5")), TEXT("a"));
}

TEST(TextFormat, OnlyAWholeSizeIsOne)
{
    EXPECT_EQ(Format(TEXT("%I5d|%I6d"), 7), TEXT("I5d|I6d"));
    EXPECT_EQ(Format(TEXT("%d 4|%d64"), 7, 8), TEXT("7 4|864"));
}

TEST(TextFormat, PointersHaveAllTheirDigits)
{
    const auto text = Format(TEXT("%p"), reinterpret_cast<void*>(static_cast<ULONG_PTR>(0xAB)));
    EXPECT_EQ(text, WString(sizeof(void*) * 2 - 2, TEXT('0')) + TEXT("AB"));
}

TEST(TextFormat, FractionsAreWritten)
{
    EXPECT_EQ(Format(TEXT("%f %.1f %6.2f"), 87.5, 107.94, -1.005), TEXT("87.500000 107.9  -1.00"));
}

TEST(TextFormat, LongLongNumbersAreWrittenWhole)
{
    EXPECT_EQ(Format(TEXT("%lld %llx|%lx1"), 1234567890123LL, 0xABCDEF0123LL, ULONG{ 5 }),
              TEXT("1234567890123 abcdef0123|51"));
}

TEST(TextFormat, ACharacterIsPaddedOnItsLeft)
{
    EXPECT_EQ(Format(TEXT("[%4c][%-4c]"), TEXT('a'), TEXT('b')), TEXT("[   a][b   ]"));
}

TEST(TextFormat, FractionsBelowOneKeepTheirSign)
{
    EXPECT_EQ(Format(TEXT("%.2f|%.2f|%+.1f|% .1f"), 0.25, -0.25, 0.5, 0.5), TEXT("0.25|-0.25|+0.5| 0.5"));
}

TEST(TextFormat, TextThatFitsIsEnded)
{
    WString buffer(8, TEXT('x'));
    EXPECT_EQ(FormatInto(buffer, 8, TEXT("%d"), 123), 3);
    EXPECT_EQ(buffer, WString(TEXT("123")) + WString(1, 0) + TEXT("xxxx"));
}

TEST(TextFormat, TextThatFitsExactlyHasNoEnd)
{
    WString buffer(5, TEXT('x'));
    EXPECT_EQ(FormatInto(buffer, 3, TEXT("%d"), 123), 3);
    EXPECT_EQ(buffer, TEXT("123xx"));
}

TEST(TextFormat, TextThatDoesNotFitIsCutWithoutAnEnd)
{
    WString buffer(5, TEXT('x'));
    EXPECT_EQ(FormatInto(buffer, 2, TEXT("%d"), 123), -1);
    EXPECT_EQ(buffer, TEXT("12xxx"));
}

TEST(TextFormat, TheShortFormatterEndsItsText)
{
    WCHAR buffer[64];
    EXPECT_EQ(wsprintfW(buffer, TEXT("%s%04x.dll"), TEXT("Table_"), 0x804U), 14);
    EXPECT_EQ(WString(buffer), TEXT("Table_0804.dll"));
}

TEST(TextFormat, TheShortFormatterWritesAtMost1024Units)
{
    const WString text(2000, TEXT('a'));
    WCHAR buffer[1100] = {};
    wsprintfW(buffer, TEXT("%s"), text.c_str());
    EXPECT_EQ(wcslen(buffer), 1023U); // and the zero
}

TEST(WideStrings, LengthAndOrderAreTold)
{
    EXPECT_EQ(wcslen(TEXT("")), 0U);
    EXPECT_EQ(wcslen(TEXT("abc")), 3U);
    EXPECT_EQ(wcscmp(TEXT("abc"), TEXT("abc")), 0);
    EXPECT_LT(wcscmp(TEXT("abc"), TEXT("abd")), 0);
    EXPECT_GT(wcscmp(TEXT("abc"), TEXT("ab")), 0);
    EXPECT_GT(wcscmp(TEXT("a"), TEXT("A")), 0);
}

TEST(WideStrings, CaseIsIgnoredForAsciiLetters)
{
    EXPECT_EQ(_wcsicmp(TEXT("Song.MP3"), TEXT("sONG.mp3")), 0);
    EXPECT_LT(_wcsicmp(TEXT("a"), TEXT("B")), 0);
    EXPECT_EQ(_wcsicmp(TEXT("AZ@["), TEXT("az@[")), 0);
    EXPECT_NE(_wcsicmp(TEXT("@["), TEXT("`{")), 0);
    EXPECT_NE(_wcsicmp(TEXT("\u00C9"), TEXT("\u00E9")), 0);
}

TEST(WideStrings, NumbersAreReadUpToTheFirstOtherCharacter)
{
    EXPECT_EQ(_wtol(TEXT("215")), 215);
    EXPECT_EQ(_wtol(TEXT("  -7x9")), -7);
    EXPECT_EQ(_wtol(TEXT("+8")), 8);
    EXPECT_EQ(_wtol(TEXT("")), 0);
    EXPECT_EQ(_wtol(TEXT("x")), 0);
    EXPECT_EQ(_wtol(TEXT("0x10")), 0);
}

} // namespace
