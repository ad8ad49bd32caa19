#include "gui/text_line.h"

#include "tests/gif/gif_builder.h"
#include "tests/gui/window_fixture.h"

using namespace cardsong::test;

namespace {

constexpr RECT kBox = { 20, 30, 120, 60 };
constexpr COLORREF kRedInk = RGB(255, 0, 0);

// The smallest rectangle around everything that is not blue.
RECT Inked(const Picture& picture)
{
    RECT box = { 320, 240, 0, 0 };
    for (int y = 0; y < 240; ++y) {
        for (int x = 0; x < 320; ++x) {
            if (picture.At(x, y) == kBlue565)
                continue;
            box = { std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
                    std::max<LONG>(box.bottom, y + 1) };
        }
    }
    return box;
}

class TextLine : public testing::Test {
protected:
    void Draw(WStringView text, UINT placement, COLORREF color = kRedInk)
    {
        DrawTextLine(m_picture.Context(), text, kBox, m_font.Get(), color, placement);
    }

    Picture m_picture;
    UniqueFont m_font = CreatePlainFont(m_picture.Context(), 12);
};

} // namespace

TEST_F(TextLine, APlainFontHasTheSizeAtNormalWeight)
{
    LOGFONTW description = {};
    const UniqueFont font = CreatePlainFont(m_picture.Context(), 14);
    ASSERT_NE(GetObjectW(font.Get(), sizeof(description), &description), 0);
    EXPECT_EQ(description.lfHeight, -(14 * GetDeviceCaps(m_picture.Context(), LOGPIXELSY) / 72));
    EXPECT_EQ(description.lfWeight, 0);
    EXPECT_EQ(description.lfFaceName[0], 0);
}

TEST_F(TextLine, WritesOnWhatIsThere)
{
    Draw(TEXT("\u25A0"), DT_LEFT);
    const RECT inked = Inked(m_picture);
    EXPECT_GE(inked.left, kBox.left);
    EXPECT_GE(inked.top, kBox.top);
    EXPECT_LT(inked.right, kBox.left + 30);
    EXPECT_GT(m_picture.Count(kRed565, inked), 20);
    EXPECT_EQ(m_picture.At(kBox.left, kBox.top), kBlue565);
}

TEST_F(TextLine, StandsWhereItsPlacementSays)
{
    Draw(TEXT("\u25A0"), DT_RIGHT | DT_VCENTER);
    const RECT right = Inked(m_picture);
    EXPECT_GT(right.left, kBox.right - 30);
    EXPECT_LE(right.right, kBox.right);
    EXPECT_NEAR((right.top + right.bottom) / 2, (kBox.top + kBox.bottom) / 2, 4);
}

TEST_F(TextLine, ManyLinesBecomeOne)
{
    Draw(TEXT("\u25A0\n\u25A0"), DT_LEFT);
    const RECT inked = Inked(m_picture);
    EXPECT_LT(inked.bottom - inked.top, 20);
}

TEST_F(TextLine, WritesTheUnitsOfTheViewAndNoMore)
{
    const WString text = TEXT("\u25A0\u25A0\u25A0\u25A0");
    Draw(WStringView(text).substr(0, 1), DT_LEFT);
    EXPECT_LT(Inked(m_picture).right, kBox.left + 30);
}

TEST_F(TextLine, AnEmptyTextDrawsNothing)
{
    Draw({}, DT_LEFT);
    Draw(WStringView(TEXT("")), DT_CENTER | DT_VCENTER);
    EXPECT_EQ(m_picture.Count(kBlue565, { 0, 0, 320, 240 }), 320 * 240);
}

TEST_F(TextLine, TheContextKeepsItsFontModeAndColour)
{
    const HDC context = m_picture.Context();
    SetBkMode(context, OPAQUE);
    SetTextColor(context, RGB(0, 255, 0));
    TEXTMETRICW before = {};
    GetTextMetricsW(context, &before);
    const UniqueFont large = CreatePlainFont(context, 40);
    DrawTextLine(context, TEXT("x"), kBox, large.Get(), kRedInk, DT_LEFT);
    TEXTMETRICW after = {};
    GetTextMetricsW(context, &after);
    EXPECT_EQ(before.tmHeight, after.tmHeight);
    EXPECT_EQ(SetBkMode(context, OPAQUE), OPAQUE);
    EXPECT_EQ(SetTextColor(context, 0), RGB(0, 255, 0));
}
