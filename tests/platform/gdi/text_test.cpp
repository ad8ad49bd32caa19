#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

using cardsong::test::Canvas;

namespace {

constexpr std::uint16_t kGround = 0;

class Text : public testing::Test {
protected:
    Text()
    {
        LOGFONTW description{};
        description.lfHeight = -24;
        m_font = CreateFontIndirectW(&description);
        m_before = SelectObject(Dc(), m_font);
        SetTextColor(Dc(), RGB(255, 255, 255));
        SetBkMode(Dc(), TRANSPARENT);
        TEXTMETRICW metrics{};
        GetTextMetricsW(Dc(), &metrics);
        m_lineHeight = metrics.tmHeight;
    }
    ~Text() override
    {
        SelectObject(Dc(), m_before);
        DeleteObject(m_font);
    }
    HDC Dc() const { return m_canvas.Dc(); }
    int Width(const WString& text)
    {
        SIZE size{};
        EXPECT_TRUE(
            GetTextExtentExPointW(Dc(), text.c_str(), static_cast<int>(text.size()), 0, nullptr, nullptr, &size));
        return size.cx;
    }
    int Draw(const WString& text, RECT rect, UINT format) { return DrawTextW(Dc(), text.c_str(), -1, &rect, format); }

    Canvas m_canvas{ 200, 100 };
    HFONT m_font = nullptr;
    HGDIOBJ m_before = nullptr;
    int m_lineHeight = 0;
};

TEST_F(Text, AFontOfNegativeHeightHasThatEm)
{
    TEXTMETRICW metrics{};
    ASSERT_TRUE(GetTextMetricsW(Dc(), &metrics));
    EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, 24);
    EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
}

TEST_F(Text, AnAverageCharacterIsNarrowerThanTheWidest)
{
    TEXTMETRICW metrics{};
    ASSERT_TRUE(GetTextMetricsW(Dc(), &metrics));
    EXPECT_GT(metrics.tmAveCharWidth, 0);
    EXPECT_LT(metrics.tmAveCharWidth, metrics.tmMaxCharWidth);
}

TEST_F(Text, AFontOfPositiveHeightHasThatLine)
{
    LOGFONTW description{};
    description.lfHeight = 30;
    const HFONT font = CreateFontIndirectW(&description);
    const HGDIOBJ before = SelectObject(Dc(), font);
    TEXTMETRICW metrics{};
    ASSERT_TRUE(GetTextMetricsW(Dc(), &metrics));
    EXPECT_NEAR(metrics.tmHeight, 30, 1);
    SelectObject(Dc(), before);
    DeleteObject(font);
}

TEST_F(Text, ExtentIsThatOfTheWholeTextWhateverTheLimit)
{
    const WString text = TEXT("Cardsong");
    SIZE size{};
    int fit = -1;
    EXPECT_TRUE(GetTextExtentExPointW(Dc(), text.c_str(), 8, 1, &fit, nullptr, &size));
    EXPECT_EQ(fit, 0);
    EXPECT_EQ(size.cx, Width(text));
    EXPECT_EQ(size.cy, m_lineHeight);
}

TEST_F(Text, FitCountsTheCharactersUpToTheLimit)
{
    const WString text = TEXT("Cardsong");
    int extents[8] = {};
    int fit = 0;
    SIZE size{};
    ASSERT_TRUE(GetTextExtentExPointW(Dc(), text.c_str(), 8, 10000, &fit, extents, &size));
    EXPECT_EQ(fit, 8);
    EXPECT_TRUE(std::is_sorted(std::begin(extents), std::end(extents)));
    EXPECT_EQ(extents[7], size.cx);
    ASSERT_TRUE(GetTextExtentExPointW(Dc(), text.c_str(), 8, extents[2], &fit, nullptr, &size));
    EXPECT_EQ(fit, 3);
    ASSERT_TRUE(GetTextExtentExPointW(Dc(), text.c_str(), 8, extents[2] - 1, &fit, nullptr, &size));
    EXPECT_EQ(fit, 2);
}

TEST_F(Text, ALimitOfMinusOneMeansAll)
{
    int fit = 0;
    SIZE size{};
    EXPECT_TRUE(GetTextExtentExPointW(Dc(), TEXT("abc"), 3, -1, &fit, nullptr, &size));
    EXPECT_EQ(fit, 3);
}

TEST_F(Text, ACountOfMinusOneHasNoExtent)
{
    SIZE size{};
    EXPECT_FALSE(GetTextExtentExPointW(Dc(), TEXT("abc"), -1, 0, nullptr, nullptr, &size));
}

TEST_F(Text, NoCharactersHaveNoExtent)
{
    SIZE size = { 9, 9 };
    int fit = 9;
    EXPECT_TRUE(GetTextExtentExPointW(Dc(), TEXT("abc"), 0, 0, &fit, nullptr, &size));
    EXPECT_EQ(fit, 0);
    EXPECT_EQ(size.cx, 0);
    EXPECT_EQ(size.cy, 0);
}

TEST_F(Text, CalcRectOfNoUnitsLeavesTheRectangle)
{
    RECT rect = { 10, 10, 100, 100 };
    EXPECT_NE(DrawTextW(Dc(), TEXT("abc"), 0, &rect, DT_CALCRECT), 0);
    EXPECT_EQ(rect.right, 100);
    EXPECT_EQ(rect.bottom, 100);
}

TEST_F(Text, CalcRectOfAnEmptyTextIsEmptyYetHasAHeight)
{
    RECT rect = { 10, 10, 100, 100 };
    EXPECT_NE(DrawTextW(Dc(), TEXT(""), -1, &rect, DT_CALCRECT), 0);
    EXPECT_EQ(rect.left, rect.right);
    EXPECT_EQ(rect.top, rect.bottom);
}

TEST_F(Text, TextThatLandsOnTheTopEdgeReturnsOne)
{
    RECT rect = { 0, 0, 0, 0 };
    EXPECT_EQ(DrawTextW(Dc(), TEXT("abc"), -1, &rect, DT_SINGLELINE | DT_BOTTOM), 1);
}

TEST_F(Text, CalcRectOfOneLineIsItsExtent)
{
    RECT rect = { 5, 7, 6, 8 };
    EXPECT_EQ(DrawTextW(Dc(), TEXT("abc"), -1, &rect, DT_CALCRECT | DT_SINGLELINE), m_lineHeight);
    EXPECT_EQ(rect.right, 5 + Width(TEXT("abc")));
    EXPECT_EQ(rect.bottom, 7 + m_lineHeight);
}

TEST_F(Text, LineEndsMakeLines)
{
    RECT rect = { 0, 0, 200, 100 };
    EXPECT_EQ(Draw(TEXT("a\nb\r\nc"), rect, DT_CALCRECT), 3 * m_lineHeight);
    EXPECT_EQ(Draw(TEXT("a\nb"), rect, DT_CALCRECT | DT_SINGLELINE), m_lineHeight);
}

TEST_F(Text, ReturnAndFeedInEitherOrderAreOneLineEnd)
{
    RECT rect = { 0, 0, 200, 100 };
    EXPECT_EQ(Draw(TEXT("a\n\rb"), rect, DT_CALCRECT), 2 * m_lineHeight);
    EXPECT_EQ(Draw(TEXT("a\r\rb"), rect, DT_CALCRECT), 3 * m_lineHeight);
    EXPECT_EQ(Draw(TEXT("a\n\nb"), rect, DT_CALCRECT), 3 * m_lineHeight);
    EXPECT_EQ(Draw(TEXT("a\n"), rect, DT_CALCRECT), m_lineHeight);
}

TEST_F(Text, LinesEndWithTheFirstThatReachesPastTheRectangle)
{
    const WString text = TEXT("a\nb\nc\nd");
    EXPECT_EQ(Draw(text, { 0, 0, 200, m_lineHeight + 5 }, 0), 2 * m_lineHeight);
    EXPECT_EQ(Draw(text, { 0, 0, 200, m_lineHeight }, 0), 2 * m_lineHeight);
    EXPECT_EQ(Draw(text, { 0, 0, 200, m_lineHeight + 5 }, DT_NOCLIP), 4 * m_lineHeight);
    EXPECT_EQ(Draw(text, { 0, 0, 200, m_lineHeight + 5 }, DT_CALCRECT), 4 * m_lineHeight);
}

TEST_F(Text, CalcRectOfALineInTheMiddleReachesToItsEnd)
{
    RECT rect = { 5, 10, 6, 110 };
    const int height = 50 - m_lineHeight / 2 + m_lineHeight;
    EXPECT_EQ(DrawTextW(Dc(), TEXT("abc"), -1, &rect, DT_CALCRECT | DT_SINGLELINE | DT_VCENTER), height);
    EXPECT_EQ(rect.top, 10);
    EXPECT_EQ(rect.bottom, 10 + height);
    EXPECT_EQ(rect.right, 5 + Width(TEXT("abc")));
}

TEST_F(Text, CalcRectOfALineAtTheBottomKeepsTheHeight)
{
    RECT rect = { 5, 10, 6, 110 };
    EXPECT_EQ(DrawTextW(Dc(), TEXT("abc"), -1, &rect, DT_CALCRECT | DT_SINGLELINE | DT_BOTTOM), 100);
    EXPECT_EQ(rect.top, 10);
    EXPECT_EQ(rect.bottom, 110);
}

TEST_F(Text, CalcRectOfALineOnTheRightStartsOnTheLeftAllTheSame)
{
    for (const UINT place : { DT_CENTER, DT_RIGHT }) {
        RECT rect = { 5, 10, 100, 20 };
        DrawTextW(Dc(), TEXT("abc"), -1, &rect, DT_CALCRECT | DT_SINGLELINE | place);
        EXPECT_EQ(rect.left, 5) << place;
        EXPECT_EQ(rect.right, 5 + Width(TEXT("abc"))) << place;
    }
}

TEST_F(Text, ALineOnTheLeftKeepsTheBlankAtItsBreak)
{
    const WString text = TEXT("one two three");
    RECT rect = { 0, 0, Width(text) - 1, 0 };
    DrawTextW(Dc(), text.c_str(), -1, &rect, DT_CALCRECT | DT_WORDBREAK);
    EXPECT_EQ(rect.right, Width(TEXT("one two ")));
}

TEST_F(Text, ALineInTheMiddleLeavesTheBlankAtItsBreak)
{
    const WString text = TEXT("one two three");
    for (const UINT place : { DT_CENTER, DT_RIGHT }) {
        RECT rect = { 0, 0, Width(text) - 1, 0 };
        DrawTextW(Dc(), text.c_str(), -1, &rect, DT_CALCRECT | DT_WORDBREAK | place);
        EXPECT_EQ(rect.right, Width(TEXT("one two"))) << place;
    }
}

TEST_F(Text, ARectangleInsideOutBreaksNoLine)
{
    RECT rect = { 100, 0, 50, 0 };
    EXPECT_EQ(DrawTextW(Dc(), TEXT("one two three"), -1, &rect, DT_CALCRECT | DT_WORDBREAK), m_lineHeight);
    EXPECT_EQ(rect.right, 100 + Width(TEXT("one two three")));
}

TEST_F(Text, WordBreakKeepsWordsWhole)
{
    const WString text = TEXT("one two");
    RECT rect = { 0, 0, Width(text) - 1, 0 };
    EXPECT_EQ(DrawTextW(Dc(), text.c_str(), -1, &rect, DT_CALCRECT | DT_WORDBREAK), 2 * m_lineHeight);
    EXPECT_LE(rect.right, Width(text) - 1);
    RECT wide = { 0, 0, Width(text), 0 };
    EXPECT_EQ(DrawTextW(Dc(), text.c_str(), -1, &wide, DT_CALCRECT | DT_WORDBREAK), m_lineHeight);
}

TEST_F(Text, AWordWiderThanTheLineStandsAlone)
{
    RECT rect = { 0, 0, 1, 0 };
    EXPECT_EQ(DrawTextW(Dc(), TEXT("one two three"), -1, &rect, DT_CALCRECT | DT_WORDBREAK), 3 * m_lineHeight);
}

TEST_F(Text, IsDrawnWithinItsRectangle)
{
    SetBkMode(Dc(), OPAQUE);
    SetBkColor(Dc(), RGB(0, 0, 255));
    Draw(TEXT("WWWWWWWWWWWW"), { 20, 30, 60, 40 }, DT_SINGLELINE);
    const RECT drawn = m_canvas.Drawn(kGround);
    EXPECT_EQ(drawn.left, 20);
    EXPECT_EQ(drawn.top, 30);
    EXPECT_EQ(drawn.right, 60);
    EXPECT_EQ(drawn.bottom, 40);
}

TEST_F(Text, NoClipLetsItLeaveItsRectangle)
{
    Draw(TEXT("WWWW"), { 20, 30, 24, 32 }, DT_SINGLELINE | DT_NOCLIP);
    const RECT drawn = m_canvas.Drawn(kGround);
    EXPECT_GT(drawn.right, 24);
    EXPECT_GT(drawn.bottom, 32);
}

TEST_F(Text, IsCentredBetweenTheEdges)
{
    Draw(TEXT("HHH"), { 0, 0, 200, 100 }, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    const RECT drawn = m_canvas.Drawn(kGround);
    EXPECT_NEAR((drawn.left + drawn.right) / 2, 100, 2);
    EXPECT_NEAR((drawn.top + drawn.bottom) / 2, 50, 5);
}

TEST_F(Text, OnTheRightEndsAtTheEdge)
{
    Draw(TEXT("HHH"), { 0, 0, 200, 100 }, DT_SINGLELINE | DT_RIGHT);
    const RECT drawn = m_canvas.Drawn(kGround);
    EXPECT_GT(drawn.right, 190);
    EXPECT_GE(drawn.left, 200 - Width(TEXT("HHH")));
}

TEST_F(Text, TheBottomFlagMovesTheLineDown)
{
    EXPECT_EQ(Draw(TEXT("H"), { 0, 0, 200, 100 }, DT_SINGLELINE | DT_BOTTOM), 100);
    EXPECT_GE(m_canvas.Drawn(kGround).top, 100 - m_lineHeight);
}

TEST_F(Text, TheBottomFlagNeedsASingleLine)
{
    Draw(TEXT("H"), { 0, 0, 200, 100 }, DT_BOTTOM);
    EXPECT_LE(m_canvas.Drawn(kGround).bottom, m_lineHeight);
}

TEST_F(Text, AnAmpersandIsAMarkAndTwoAreOne)
{
    RECT rect = { 0, 0, 0, 0 };
    DrawTextW(Dc(), TEXT("a&b"), -1, &rect, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(rect.right, Width(TEXT("ab")));
    DrawTextW(Dc(), TEXT("a&&b"), -1, &rect, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(rect.right, Width(TEXT("a&b")));
    DrawTextW(Dc(), TEXT("a&b"), -1, &rect, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    EXPECT_EQ(rect.right, Width(TEXT("a&b")));
}

TEST_F(Text, AnAmpersandAtTheEndIsShown)
{
    RECT rect = { 0, 0, 0, 0 };
    DrawTextW(Dc(), TEXT("a&"), -1, &rect, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(rect.right, Width(TEXT("a&")));
    DrawTextW(Dc(), TEXT("&"), 1, &rect, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(rect.right, Width(TEXT("&")));
}

TEST_F(Text, AMarkUnderlinesTheNextCharacter)
{
    Draw(TEXT("H"), { 0, 0, 200, 100 }, DT_SINGLELINE);
    const RECT plain = m_canvas.Drawn(kGround);
    m_canvas.Fill(kGround);
    Draw(TEXT("&H"), { 0, 0, 200, 100 }, DT_SINGLELINE);
    EXPECT_GT(m_canvas.Drawn(kGround).bottom, plain.bottom);
}

TEST_F(Text, AMarkUnderlinesItsCharacterOnAnyLine)
{
    Draw(TEXT("HH\nHH"), { 0, 0, 200, 100 }, 0);
    const RECT plain = m_canvas.Drawn(kGround);
    m_canvas.Fill(kGround);
    Draw(TEXT("HH\nH&H"), { 0, 0, 200, 100 }, 0);
    EXPECT_GT(m_canvas.Drawn(kGround).bottom, plain.bottom);
}

TEST_F(Text, AMarkUnderlinesTheCharacterBehindIt)
{
    Draw(TEXT("HHH"), { 0, 0, 200, 100 }, DT_SINGLELINE);
    const int line = m_canvas.Drawn(kGround).bottom;
    m_canvas.Fill(kGround);
    Draw(TEXT("H&HH"), { 0, 0, 200, 100 }, DT_SINGLELINE);
    int y = line;
    const auto isUnderlined = [&](int x) { return m_canvas.At(x, y) != kGround; };
    const int from = Width(TEXT("H"));
    const int to = Width(TEXT("HH"));
    while (y < 99 && !isUnderlined((from + to) / 2))
        ++y;
    EXPECT_FALSE(isUnderlined(from - 1));
    EXPECT_TRUE(isUnderlined(from));
    EXPECT_TRUE(isUnderlined(to - 2));
    EXPECT_FALSE(isUnderlined(to));
}

TEST_F(Text, AMarkBehindTheEllipsisUnderlinesNothing)
{
    const RECT narrow = { 0, 0, Width(TEXT("HH...")), 100 };
    Draw(TEXT("HHHHHHHH"), narrow, DT_SINGLELINE | DT_WORD_ELLIPSIS);
    const auto plain = m_canvas.Pixels();
    m_canvas.Fill(kGround);
    Draw(TEXT("HHHHHHH&H"), narrow, DT_SINGLELINE | DT_WORD_ELLIPSIS);
    EXPECT_EQ(m_canvas.Pixels(), plain);
}

TEST_F(Text, ARectangleOfNoWidthBreaksAtEveryWord)
{
    RECT rect = { 0, 0, 0, 0 };
    EXPECT_EQ(DrawTextW(Dc(), TEXT("a b c"), -1, &rect, DT_CALCRECT | DT_WORDBREAK), 3 * m_lineHeight);
    EXPECT_EQ(rect.right, std::max({ Width(TEXT("a")), Width(TEXT("b")), Width(TEXT("c")) }));
}

TEST_F(Text, MetricsTellAFontOfOutlinesForAScreen)
{
    TEXTMETRICW metrics{};
    ASSERT_TRUE(GetTextMetricsW(Dc(), &metrics));
    EXPECT_EQ(metrics.tmPitchAndFamily & 0x0F, 0x07);
    EXPECT_EQ(metrics.tmDigitizedAspectX, 96);
    EXPECT_EQ(metrics.tmDigitizedAspectY, 96);
}

TEST_F(Text, AnEllipsisKeepsTheTextInItsWidth)
{
    const WString text = TEXT("WWWWWWWWWWWW");
    Draw(text, { 0, 0, 150, 100 }, DT_SINGLELINE | DT_WORD_ELLIPSIS | DT_NOCLIP);
    EXPECT_LE(m_canvas.Drawn(kGround).right, 151);
    m_canvas.Fill(kGround);
    Draw(TEXT("W"), { 0, 0, 150, 100 }, DT_SINGLELINE | DT_WORD_ELLIPSIS);
    EXPECT_LE(m_canvas.Drawn(kGround).right, Width(TEXT("W")) + 1);
}

TEST_F(Text, AnEllipsisCutsWithinAWordWhereItJustFits)
{
    SetBkMode(Dc(), OPAQUE);
    SetBkColor(Dc(), RGB(0, 0, 255));
    const int fitting = Width(TEXT("abc..."));
    Draw(TEXT("abcdefgh"), { 0, 0, fitting, 100 }, DT_SINGLELINE | DT_WORD_ELLIPSIS);
    EXPECT_EQ(m_canvas.Drawn(kGround).right, fitting);
    m_canvas.Fill(kGround);
    Draw(TEXT("abcdefgh"), { 0, 0, fitting - 1, 100 }, DT_SINGLELINE | DT_WORD_ELLIPSIS);
    EXPECT_EQ(m_canvas.Drawn(kGround).right, Width(TEXT("ab...")));
}

TEST_F(Text, AnEllipsisStandsAloneWhereNoCharacterFits)
{
    SetBkMode(Dc(), OPAQUE);
    SetBkColor(Dc(), RGB(0, 0, 255));
    Draw(TEXT("WWWW"), { 0, 0, 1, 100 }, DT_SINGLELINE | DT_WORD_ELLIPSIS | DT_NOCLIP);
    EXPECT_EQ(m_canvas.Drawn(kGround).right, Width(TEXT("...")));
}

TEST_F(Text, AnOpaqueBackgroundFillsTheCell)
{
    SetBkMode(Dc(), OPAQUE);
    SetBkColor(Dc(), RGB(0, 0, 255));
    SetTextColor(Dc(), RGB(0, 0, 255));
    Draw(TEXT("HH"), { 10, 20, 200, 100 }, DT_SINGLELINE);
    const RECT drawn = m_canvas.Drawn(kGround);
    EXPECT_EQ(drawn.left, 10);
    EXPECT_EQ(drawn.top, 20);
    EXPECT_EQ(drawn.right, 10 + Width(TEXT("HH")));
    EXPECT_EQ(drawn.bottom, 20 + m_lineHeight);
    EXPECT_EQ(m_canvas.At(15, 25), 0x001F);
}

TEST_F(Text, IsDrawnInTheTextColor)
{
    SetTextColor(Dc(), RGB(0, 255, 0));
    Draw(TEXT("H"), { 0, 0, 200, 100 }, DT_SINGLELINE);
    const auto pixels = m_canvas.Pixels();
    EXPECT_TRUE(std::all_of(pixels.begin(), pixels.end(), [](auto word) { return (word & 0xF81F) == 0; }));
    EXPECT_TRUE(std::any_of(pixels.begin(), pixels.end(), [](auto word) { return word == 0x07E0; }));
}

TEST_F(Text, ANullTextDrawsNothing)
{
    RECT rect = { 0, 0, 200, 100 };
    DrawTextW(Dc(), nullptr, -1, &rect, DT_SINGLELINE);
    EXPECT_EQ(m_canvas.Drawn(kGround).right, 0);
}

TEST_F(Text, BoldIsHeavier)
{
    const auto inked = [&] {
        const auto pixels = m_canvas.Pixels();
        return std::accumulate(pixels.begin(), pixels.end(), 0, [](int sum, auto word) { return sum + (word >> 11); });
    };
    Draw(TEXT("HHH"), { 0, 0, 200, 100 }, DT_SINGLELINE);
    const int regular = inked();
    m_canvas.Fill(kGround);
    LOGFONTW description{};
    description.lfHeight = -24;
    description.lfWeight = 700;
    const HFONT bold = CreateFontIndirectW(&description);
    const HGDIOBJ before = SelectObject(Dc(), bold);
    Draw(TEXT("HHH"), { 0, 0, 200, 100 }, DT_SINGLELINE);
    EXPECT_GT(inked(), regular * 11 / 10);
    SelectObject(Dc(), before);
    DeleteObject(bold);
}

TEST_F(Text, ASurrogatePairIsOneCharacter)
{
    const WString pair = { static_cast<WCHAR>(0xD840), static_cast<WCHAR>(0xDC0B) }; // U+2000B
    int extents[2] = {};
    int fit = 0;
    SIZE size{};
    ASSERT_TRUE(GetTextExtentExPointW(Dc(), pair.c_str(), 2, -1, &fit, extents, &size));
    EXPECT_EQ(fit, 2);
    EXPECT_EQ(extents[1], size.cx);
    EXPECT_LE(size.cx, 24 * 3 / 2); // two would be wider
}

TEST_F(Text, AHalfOfAPairTakesNoNeighbourWithIt)
{
    const WString high = { static_cast<WCHAR>(0xD840) };
    const WString low = { static_cast<WCHAR>(0xDC0B) };
    EXPECT_EQ(Width(high + TEXT("x")), Width(high) + Width(TEXT("x")));
    EXPECT_EQ(Width(TEXT("x") + low), Width(TEXT("x")) + Width(low));
    EXPECT_EQ(Width(low + high), Width(low) + Width(high));
}

TEST_F(Text, NoPairOfALongTextIsSplit)
{
    const WString pair = { static_cast<WCHAR>(0xD840), static_cast<WCHAR>(0xDC0B) };
    WString text = TEXT("x"); // so that pairs stand across every even place
    for (int i = 0; i < 1000; ++i)
        text += pair;
    EXPECT_EQ(Width(text), Width(TEXT("x")) + 1000 * Width(pair));
}

TEST_F(Text, EveryVisibleCharacterOfAsciiIsDrawn)
{
    for (WCHAR character = TEXT('!'); character <= TEXT('~'); ++character) {
        m_canvas.Fill(kGround);
        Draw(WString(1, character), { 0, 0, 200, 100 }, DT_SINGLELINE | DT_NOPREFIX);
        EXPECT_GT(m_canvas.Drawn(kGround).right, 0) << static_cast<int>(character);
    }
}

TEST_F(Text, LoneSurrogatesAndControlsAreHarmless)
{
    const WString odd = { static_cast<WCHAR>(0xDC00), 1, static_cast<WCHAR>(0xD800), 'x', static_cast<WCHAR>(0x2028) };
    SIZE size{};
    ASSERT_TRUE(GetTextExtentExPointW(Dc(), odd.c_str(), static_cast<int>(odd.size()), 0, nullptr, nullptr, &size));
    EXPECT_GE(size.cx, Width(TEXT("x")));
    Draw(odd, { 0, 0, 200, 100 }, DT_SINGLELINE);
}

TEST_F(Text, AVeryLongTextHasTheExtentOfItsParts)
{
    const WString text(5000, static_cast<WCHAR>(0x6B4C));
    EXPECT_EQ(Width(text), 5000 * Width(WString(1, static_cast<WCHAR>(0x6B4C))));
    EXPECT_EQ(Draw(text, { 0, 0, 200, 100 }, DT_SINGLELINE | DT_RIGHT), m_lineHeight);
    EXPECT_GT(m_canvas.Drawn(kGround).right, 190);
}

} // namespace
