// What a message box looks like, pixel by pixel.
#include "platform/linux/gdi/screen.h"
#include "platform/linux/user/input.h"
#include "platform/linux/user/message_box_look.h"
#include "platform/screen_size.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using namespace cardsong;
using user::MessageBoxLayout;
using user::PlanMessageBox;

// One letter stands for a colour: the sign, the ground that shows as its exclamation mark, and what was there before.
constexpr const char* kSign[] = {
    ".................##.................", ".................##.................",
    ".................##.................", "................####................",
    "................####................", "...............######...............",
    "...............######...............", "..............########..............",
    "..............########..............", ".............##########.............",
    ".............##########.............", "............############............",
    "............############............", "...........#####oooo#####...........",
    "...........#####oooo#####...........", "..........######oooo######..........",
    "..........######oooo######..........", ".........#######oooo#######.........",
    ".........#######oooo#######.........", "........########oooo########........",
    "........########oooo########........", ".......#########oooo#########.......",
    ".......#########oooo#########.......", "......##########oooo##########......",
    "......##########oooo##########......", ".....##########################.....",
    ".....##########################.....", "....############################....",
    "....############oooo############....", "...#############oooo#############...",
    "...#############oooo#############...", "..##############oooo##############..",
    "..################################..", ".##################################.",
    ".##################################.", "####################################",
};

class MessageBoxLook : public testing::Test {
protected:
    static constexpr std::uint16_t kGround = 0x08A4;
    static constexpr std::uint16_t kPanel = 0x1127;
    static constexpr std::uint16_t kEdge = 0x2A8D;
    static constexpr std::uint16_t kAccent = 0x05FE;
    static constexpr std::uint16_t kWarning = 0xFC64;
    static constexpr std::uint16_t kFace = 0x12F0;
    static constexpr std::uint16_t kFaceTop = 0x44F8;
    static constexpr std::uint16_t kPressedFace = 0x03F5;

    MessageBoxLook()
    {
        user::ResetWindows();
        gdi::ClearScreen();
    }
    ~MessageBoxLook() override { DeleteObject(m_font); }

    // Draws on the screen and keeps the picture.
    void Draw(const std::function<void(HDC)>& draw)
    {
        const HDC screen = GetDC(nullptr);
        draw(screen);
        ReleaseDC(nullptr, screen);
        m_pixels.resize(std::size_t{ kScreenWidthPx } * kScreenHeightPx);
        gdi::CopyScreen(m_pixels);
    }
    std::uint16_t At(LONG x, LONG y) const { return m_pixels[static_cast<std::size_t>(y * kScreenWidthPx + x)]; }
    const std::vector<std::uint16_t>& Picture() const { return m_pixels; }

    const HFONT m_font = user::MakeMessageFont();

private:
    std::vector<std::uint16_t> m_pixels;
};

TEST_F(MessageBoxLook, ItsSignIsATriangleWithAnExclamationMark)
{
    const auto plan = PlanMessageBox({ u"", u"", true, 1 }, m_font);
    Draw([&](HDC context) { DrawMessageBox(context, plan, u"", m_font); });
    for (LONG y = 0; y < user::kSignPx; ++y) {
        std::string row;
        for (LONG x = 0; x < user::kSignPx; ++x) {
            const std::uint16_t pixel = At(plan.sign.left + x, plan.sign.top + y);
            row += pixel == kWarning ? '#' : pixel == kGround ? 'o' : pixel == kPanel ? '.' : '?';
        }
        EXPECT_EQ(row, kSign[y]) << y;
    }
}

TEST_F(MessageBoxLook, ItIsAPanelWithAnEdgeAndABandWithoutASignUnlessItHasOne)
{
    const auto plan = PlanMessageBox({ u"", u"", false, 1 }, m_font);
    Draw([&](HDC context) { DrawMessageBox(context, plan, u"", m_font); });
    const LONG widthPx = plan.box.right - plan.box.left;
    const LONG heightPx = plan.box.bottom - plan.box.top;
    for (LONG y = 0; y < heightPx; ++y)
        for (LONG x = 0; x < widthPx; ++x) {
            const bool isEdge = x == 0 || x == widthPx - 1 || y == heightPx - 1;
            ASSERT_EQ(At(x, y), y < 26 ? kAccent : isEdge ? kEdge : kPanel) << x << ", " << y;
        }
    EXPECT_EQ(At(widthPx, 0), 0);
    EXPECT_EQ(At(0, heightPx), 0);
}

TEST_F(MessageBoxLook, ItsWordsStandWhereThePlanPutsThem)
{
    const auto plan = PlanMessageBox({ u"One & two", u"Title & more", false, 1 }, m_font);
    Draw([&](HDC context) { DrawMessageBox(context, plan, u"Title & more", m_font); });
    const auto drawn = Picture();
    MessageBoxLayout bare = plan;
    bare.shownText.clear();
    Draw([&](HDC context) {
        DrawMessageBox(context, bare, u"", m_font);
        SelectObject(context, m_font);
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, RGB(0x08, 0x14, 0x21));
        RECT title{ 12, 0, 284, 26 };
        DrawTextW(context, u"Title & more", -1, &title, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
        SetTextColor(context, RGB(0xFF, 0xFF, 0xFF));
        RECT message = plan.message;
        DrawTextW(context, u"One & two", -1, &message, DT_WORDBREAK | DT_NOPREFIX);
    });
    EXPECT_TRUE(drawn == Picture());
}

TEST_F(MessageBoxLook, ACaptionThatIsTooLongEndsInAnEllipsisInsideTheBand)
{
    const std::u16string caption(200, u'W');
    const auto plan = PlanMessageBox({ u"", caption, false, 1 }, m_font);
    Draw([&](HDC context) { DrawMessageBox(context, plan, caption, m_font); });
    LONG last = 0;
    for (LONG y = 0; y < 26; ++y)
        for (LONG x = 0; x < 296; ++x)
            if (At(x, y) != kAccent) {
                EXPECT_GE(x, 12);
                last = std::max(last, x);
            }
    EXPECT_LT(last, 284);
    LONG highest = 26; // of what stands in the last five columns: full stops, no letter
    for (LONG y = 0; y < 26; ++y)
        for (LONG x = last - 4; x <= last; ++x)
            if (At(x, y) != kAccent)
                highest = std::min(highest, y);
    EXPECT_GT(highest, 13);
}

TEST_F(MessageBoxLook, DrawingItLeavesTheContextAsItWas)
{
    const auto plan = PlanMessageBox({ u"Text", u"Title", true, 1 }, m_font);
    Draw([&](HDC context) {
        const HGDIOBJ font = GetStockObject(SYSTEM_FONT);
        SelectObject(context, font);
        SetBkMode(context, OPAQUE);
        SetTextColor(context, RGB(1, 2, 3));
        DrawMessageBox(context, plan, u"Title", m_font);
        EXPECT_EQ(SelectObject(context, font), font);
        EXPECT_EQ(SetBkMode(context, OPAQUE), OPAQUE);
        EXPECT_EQ(SetTextColor(context, 0), RGB(1, 2, 3));
    });
}

TEST_F(MessageBoxLook, AButtonShowsByItsEdgeAndItsFaceWhatStateItIsIn)
{
    struct Case {
        user::ButtonFace face;
        std::uint16_t edge;
        std::uint16_t top;
        std::uint16_t inside;
    };
    for (const auto& [face, edge, top, inside] :
         { Case{ user::ButtonFace::Normal, kPanel, kFaceTop, kFace },
           Case{ user::ButtonFace::Focused, kAccent, kFaceTop, kFace },
           Case{ user::ButtonFace::Pressed, kAccent, kAccent, kPressedFace } }) {
        Draw([&, drawn = face](HDC context) {
            user::DrawMessageBoxButton(context, { 20, 30, 60, 50 }, u"", drawn, m_font);
        });
        for (LONG y = 30; y < 50; ++y)
            for (LONG x = 20; x < 60; ++x) {
                const bool isEdge = x < 22 || x >= 58 || y < 32 || y >= 48;
                ASSERT_EQ(At(x, y), isEdge ? edge : y == 32 ? top : inside) << x << ", " << y;
            }
        EXPECT_EQ(At(19, 40), 0);
        EXPECT_EQ(At(60, 40), 0);
    }
}

TEST_F(MessageBoxLook, TheCaptionOfAButtonIsWhiteInItsMiddleAndShowsAnAmpersand)
{
    const RECT place{ 20, 30, 116, 70 };
    Draw([&](HDC context) { user::DrawMessageBoxButton(context, place, u"A & B", user::ButtonFace::Normal, m_font); });
    const auto drawn = Picture();
    Draw([&](HDC context) {
        user::DrawMessageBoxButton(context, place, u"", user::ButtonFace::Normal, m_font);
        SelectObject(context, m_font);
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, RGB(0xFF, 0xFF, 0xFF));
        RECT inner{ 22, 32, 114, 68 };
        DrawTextW(context, u"A & B", -1, &inner, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
    });
    EXPECT_TRUE(drawn == Picture());
}

TEST_F(MessageBoxLook, ALongCaptionFillsTheBandToItsMargin)
{
    for (std::size_t thin = 0; thin < 30; ++thin) { // so that it is cut at many a place
        const std::u16string caption = std::u16string(thin, u'i') + std::u16string(200, u'W');
        const auto plan = PlanMessageBox({ u"", caption, false, 1 }, m_font);
        Draw([&](HDC context) { DrawMessageBox(context, plan, caption, m_font); });
        const auto drawn = Picture();
        Draw([&](HDC context) {
            DrawMessageBox(context, plan, u"", m_font);
            SelectObject(context, m_font);
            SetBkMode(context, TRANSPARENT);
            SetTextColor(context, RGB(0x08, 0x14, 0x21));
            RECT title{ 12, 0, 284, 26 };
            DrawTextW(context, caption.c_str(), -1, &title,
                      DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_WORD_ELLIPSIS);
        });
        EXPECT_TRUE(drawn == Picture()) << thin;
    }
}

TEST_F(MessageBoxLook, ItsFontIsFifteenPixelsHighAndBoldExceptInChinese)
{
    const test::ScratchDevice device;
    const auto pictureOf = [this](HFONT font) {
        Draw([font](HDC context) {
            gdi::ClearScreen();
            SelectObject(context, font);
            RECT place{ 0, 0, 320, 240 };
            DrawTextW(context, u"Hamburg 没有", -1, &place, DT_SINGLELINE);
            SelectObject(context, GetStockObject(SYSTEM_FONT));
        });
        DeleteObject(font);
        return Picture();
    };
    for (const auto& [language, weight] :
         { std::pair{ 0x0409, 700 }, std::pair{ 0x0804, 400 }, std::pair{ 0x0404, 400 }, std::pair{ 0x0407, 700 } }) {
        SetUserDefaultUILanguage(static_cast<LANGID>(language));
        LOGFONTW description{};
        description.lfHeight = -15;
        description.lfWeight = weight;
        const auto made = pictureOf(user::MakeMessageFont());
        EXPECT_TRUE(made == pictureOf(CreateFontIndirectW(&description))) << language;
        description.lfWeight = 1100 - weight;
        EXPECT_FALSE(made == pictureOf(CreateFontIndirectW(&description))) << language;
    }
}

} // namespace
