// How a message box of the layer stands on its screen, and what a finger and the exit key do to it.
#include "platform/linux/gdi/screen.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "platform/linux/user/message_box_look.h"
#include "platform/screen_size.h"
#include "tests/platform/scratch_device.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong;
using user::MessageBoxLayout;
using user::PlanMessageBox;

class MessageBoxPlan : public testing::Test {
protected:
    ~MessageBoxPlan() override { DeleteObject(m_font); }
    MessageBoxLayout Plan(const std::u16string& text, int buttons = 1, bool hasSign = false) const
    {
        return PlanMessageBox({ text, u"Title", hasSign, buttons }, m_font);
    }
    // What the text would take, wrapped into the message's width.
    LONG HeightOf(const std::u16string& text, const RECT& message) const
    {
        const HDC context = CreateCompatibleDC(nullptr);
        SelectObject(context, m_font);
        RECT rect = { 0, 0, message.right - message.left, 0 };
        DrawTextW(context, text.c_str(), -1, &rect, user::kMessageFormat | DT_CALCRECT);
        DeleteDC(context);
        return rect.bottom;
    }
    static LONG LineHeight(HFONT font)
    {
        const HDC context = CreateCompatibleDC(nullptr);
        SelectObject(context, font);
        RECT rect = { 0, 0, 1000, 0 };
        DrawTextW(context, u"x", -1, &rect, user::kMessageFormat | DT_CALCRECT);
        DeleteDC(context);
        return rect.bottom;
    }
    static std::u16string Lines(LONG count)
    {
        std::u16string lines = u"x";
        for (LONG i = 1; i < count; ++i)
            lines += u"\nx";
        return lines;
    }

    const HFONT m_font = user::MakeMessageFont();
};

std::u16string Repeat(const std::u16string& text, int times)
{
    std::u16string repeated;
    for (int i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

TEST_F(MessageBoxPlan, StandsInTheMiddleOfTheScreenWhateverTheText)
{
    for (const int times : { 0, 1, 5, 20, 60, 2000 }) {
        for (const auto* const words : { u"word ", u"没有找到存储卡。", u"line\n", u"W" }) {
            const auto plan = Plan(Repeat(words, times), 2, true);
            EXPECT_GE(plan.box.left, 0);
            EXPECT_GE(plan.box.top, 0);
            EXPECT_EQ(plan.box.left, kScreenWidthPx - plan.box.right);
            EXPECT_LE(std::abs(plan.box.top - (kScreenHeightPx - plan.box.bottom)), 1);
        }
    }
}

TEST_F(MessageBoxPlan, KeepsItsPartsApart)
{
    for (const int times : { 1, 60, 2000 }) {
        const auto plan = Plan(Repeat(u"word ", times), 2, true);
        EXPECT_LE(plan.sign.right, plan.message.left);
        EXPECT_GE(plan.message.top, plan.band.bottom);
        EXPECT_GE(plan.sign.top, plan.band.bottom);
        for (const RECT& button : plan.buttons) {
            EXPECT_GE(button.top, plan.message.bottom);
            EXPECT_GE(button.top, plan.sign.bottom);
        }
        EXPECT_LT(plan.buttons[0].right, plan.buttons[1].left);
    }
}

TEST_F(MessageBoxPlan, HasButtonsForAFinger)
{
    for (const int count : { 1, 2 }) {
        const auto plan = Plan(u"Text", count);
        ASSERT_EQ(plan.buttons.size(), static_cast<std::size_t>(count));
        for (const RECT& button : plan.buttons) {
            EXPECT_GE(button.bottom - button.top, 38);
            EXPECT_GE(button.right - button.left, 38);
            EXPECT_GE(button.left, 0);
            EXPECT_LE(button.right, plan.box.right - plan.box.left);
            EXPECT_LE(button.bottom, plan.box.bottom - plan.box.top);
        }
    }
}

TEST_F(MessageBoxPlan, GrowsWithItsText)
{
    const auto low = Plan(u"Text");
    const auto high = Plan(Repeat(u"word ", 30));
    EXPECT_EQ(low.shownText, u"Text");
    EXPECT_EQ(high.shownText, Repeat(u"word ", 30));
    EXPECT_GT(high.box.bottom - high.box.top, low.box.bottom - low.box.top);
    EXPECT_EQ(high.message.bottom - high.message.top, HeightOf(high.shownText, high.message));
}

TEST_F(MessageBoxPlan, CutsATextThatHasNoRoomAndSaysSo)
{
    const std::u16string text = Repeat(u"没有找到存储卡。", 500);
    const auto plan = Plan(text);
    ASSERT_FALSE(plan.shownText.empty());
    EXPECT_EQ(plan.shownText.back(), u'…');
    const std::size_t kept = plan.shownText.size() - 1;
    EXPECT_EQ(plan.shownText.substr(0, kept), text.substr(0, kept));
    const LONG roomPx = plan.message.bottom - plan.message.top;
    EXPECT_EQ(HeightOf(plan.shownText, plan.message), roomPx);
    EXPECT_GT(HeightOf(text.substr(0, kept + 1) + u'…', plan.message), roomPx) << "one more would have had room";
}

TEST_F(MessageBoxPlan, BreaksAWordThatIsWiderThanALine)
{
    const std::u16string path = u"\\SDMMC\\" + Repeat(u"VeryLongFolderName", 4) + u"\\song.mp3";
    const auto plan = Plan(u"Cannot read " + path);
    std::u16string shown = plan.shownText;
    EXPECT_GE(std::count(shown.begin(), shown.end(), u'\n'), 2);
    std::erase(shown, u'\n');
    EXPECT_EQ(shown, u"Cannot read " + path);
}

TEST_F(MessageBoxPlan, LeavesWhatWrappingBreaksAsItIs)
{
    for (const auto& text :
         { Repeat(u"word ", 20), Repeat(u"没有找到存储卡", 8), Repeat(u"W", 5) + u"\n" + Repeat(u"i", 40) })
        EXPECT_EQ(Plan(text).shownText, text);
}

TEST_F(MessageBoxPlan, NeverBreaksAPairInTwo)
{
    const std::u16string music = u"\xD834\xDD1E"; // a clef, beyond the first 65,536 characters
    for (const auto* const before : { u"", u"i", u"W" }) {
        const auto shown = Plan(before + Repeat(music, 60)).shownText;
        EXPECT_NE(shown.find(u'\n'), std::u16string::npos);
        for (std::size_t i = 1; i < shown.size(); ++i) {
            if (shown[i] == u'\xDD1E') {
                ASSERT_EQ(shown[i - 1], u'\xD834') << i;
            }
        }
    }
}

TEST_F(MessageBoxPlan, PlacesItsPartsToThePixel)
{
    const auto plan = Plan(u"Text", 2, true);
    const LONG textPx = HeightOf(u"Text", plan.message);
    const LONG textTop = 38 + (36 - textPx) / 2;
    EXPECT_EQ(plan.box, (RECT{ 12, 51, 308, 189 }));
    EXPECT_EQ(plan.band, (RECT{ 0, 0, 296, 26 }));
    EXPECT_EQ(plan.sign, (RECT{ 12, 38, 48, 74 }));
    EXPECT_EQ(plan.message, (RECT{ 60, textTop, 284, textTop + textPx }));
    ASSERT_EQ(plan.buttons.size(), 2U);
    EXPECT_EQ(plan.buttons[0], (RECT{ 46, 86, 142, 126 }));
    EXPECT_EQ(plan.buttons[1], (RECT{ 154, 86, 250, 126 }));
}

TEST_F(MessageBoxPlan, WithoutASignGivesItsRoomToTheText)
{
    const auto plan = Plan(u"Text");
    const LONG textPx = HeightOf(u"Text", plan.message);
    EXPECT_EQ(plan.sign, (RECT{}));
    EXPECT_EQ(plan.message, (RECT{ 12, 38, 284, 38 + textPx }));
    EXPECT_EQ(plan.box.bottom - plan.box.top, 38 + textPx + 64);
    ASSERT_EQ(plan.buttons.size(), 1U);
    EXPECT_EQ(plan.buttons[0], (RECT{ 100, 50 + textPx, 196, 90 + textPx }));
}

TEST_F(MessageBoxPlan, KeepsATextThatFillsItsRoomToTheLastPixel)
{
    constexpr LONG kRoomPx = 130;
    int filled = 0;
    for (LONG heightPx = 5; heightPx <= 60; ++heightPx) {
        LOGFONTW description{};
        description.lfHeight = -heightPx;
        const HFONT font = CreateFontIndirectW(&description);
        const LONG linePx = LineHeight(font);
        if (kRoomPx % linePx == 0) {
            const std::u16string full = Lines(kRoomPx / linePx);
            const auto plan = PlanMessageBox({ full, u"Title", false, 1 }, font);
            EXPECT_EQ(plan.shownText, full) << heightPx;
            EXPECT_EQ(plan.message.bottom - plan.message.top, kRoomPx) << heightPx;
            EXPECT_EQ(plan.box, (RECT{ 12, 4, 308, 236 })) << heightPx;
            const auto cut = PlanMessageBox({ Lines(kRoomPx / linePx + 1), u"Title", false, 1 }, font);
            EXPECT_EQ(cut.shownText.back(), u'…') << heightPx;
            EXPECT_EQ(cut.box, (RECT{ 12, 4, 308, 236 })) << heightPx;
            ++filled;
        }
        DeleteObject(font);
    }
    EXPECT_GT(filled, 0) << "no font has lines that fill the room";
}

class MessageBoxOnScreen : public testing::Test {
protected:
    MessageBoxOnScreen()
    {
        user::ResetWindows();
        gdi::ClearScreen();
    }
    ~MessageBoxOnScreen() override
    {
        s_act = nullptr;
        user::ResetWindows();
    }
    static int Ask(UINT type, std::function<void(HWND box)> act)
    {
        s_act = std::move(act);
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, Act);
        const int answer = MessageBoxW(nullptr, TEXT("Text"), TEXT("Title"), type);
        KillTimer(nullptr, timer);
        return answer;
    }
    static void Tap(HWND button)
    {
        RECT rect{};
        GetWindowRect(button, &rect);
        const POINT middle = { (rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2 };
        user::PointerDown(middle);
        user::PointerUp(middle);
    }
    static std::uint16_t At(int x, int y)
    {
        std::vector<std::uint16_t> pixels(std::size_t{ kScreenWidthPx } * kScreenHeightPx);
        gdi::CopyScreen(pixels);
        return pixels[static_cast<std::size_t>(y * kScreenWidthPx + x)];
    }

private:
    static void CALLBACK Act(HWND, UINT, UINT_PTR, DWORD) { s_act(GetActiveWindow()); }
    static inline std::function<void(HWND)> s_act;
};

TEST_F(MessageBoxOnScreen, ATapOnAButtonIsItsAnswer)
{
    for (const int id : { IDOK, IDCANCEL })
        EXPECT_EQ(Ask(MB_OKCANCEL, [id](HWND box) { Tap(GetDlgItem(box, id)); }), id);
}

TEST_F(MessageBoxOnScreen, ATapBesideItIsNone)
{
    bool isTapped = false;
    EXPECT_EQ(Ask(MB_OK,
                  [&](HWND box) {
                      if (isTapped)
                          Tap(GetDlgItem(box, IDOK));
                      user::PointerDown({ 2, 2 });
                      user::PointerUp({ 2, 2 });
                      isTapped = true;
                  }),
              IDOK);
    EXPECT_TRUE(isTapped);
}

TEST_F(MessageBoxOnScreen, TheExitKeyEndsItAndReachesTheWindowBehindIt)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.handler = JustValidate;
    TestWindow behind(options);
    SetActiveWindow(behind);
    EXPECT_EQ(Ask(MB_YESNO, [](HWND) { user::PressExitKey(); }), IDNO);
    PumpMessages();
    ASSERT_EQ(behind.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(behind.Last(WM_KEYDOWN)->wParam, static_cast<WPARAM>(VK_F24));
}

TEST_F(MessageBoxOnScreen, IsDrawnWholeAndShowsWhichButtonHasTheFocus)
{
    std::vector<std::uint16_t> edges;
    std::uint16_t band = 0;
    std::uint16_t panel = 0;
    Ask(MB_YESNO, [&](HWND box) {
        RECT rect{};
        GetWindowRect(box, &rect);
        band = At(rect.left + 3, rect.top + 3);
        panel = At(rect.left + 5, rect.bottom - 5);
        for (const int id : { IDYES, IDNO }) {
            RECT button{};
            GetWindowRect(GetDlgItem(box, id), &button);
            edges.push_back(At(button.left, button.top));
        }
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
    });
    EXPECT_EQ(band, 0x05FE);
    EXPECT_EQ(panel, 0x1127);
    EXPECT_EQ(edges, (std::vector<std::uint16_t>{ 0x05FE, 0x1127 }));
}

TEST_F(MessageBoxOnScreen, OfUnknownButtonsIsNotShown)
{
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(MessageBoxW(nullptr, TEXT("Text"), TEXT("Title"), 0xF), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

} // namespace
