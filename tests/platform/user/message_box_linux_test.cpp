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

TEST_F(MessageBoxPlan, CutsATextThatIsOnePixelTooHigh)
{
    constexpr LONG kTooHighPx = 131;
    int seen = 0;
    for (LONG heightPx = 90; heightPx <= 135; ++heightPx) {
        LOGFONTW description{};
        description.lfHeight = -heightPx;
        const HFONT font = CreateFontIndirectW(&description);
        if (LineHeight(font) == kTooHighPx) {
            EXPECT_EQ(PlanMessageBox({ u"x", u"Title", false, 1 }, font).shownText, u"…");
            ++seen;
        }
        DeleteObject(font);
    }
    EXPECT_GT(seen, 0) << "no font is that high";
}

TEST_F(MessageBoxPlan, CutsATextOfAnyLengthNoShorterThanItMust)
{
    for (int count = 150; count < 170; ++count) {
        const std::u16string text = Repeat(u"没", count) + Repeat(u"i", 40);
        const auto plan = Plan(text, 1, true);
        ASSERT_EQ(plan.shownText.back(), u'…') << count;
        const std::size_t kept = plan.shownText.size() - 1;
        EXPECT_GT(HeightOf(text.substr(0, kept + 1) + u'…', plan.message), plan.message.bottom - plan.message.top)
            << count;
    }
}

TEST_F(MessageBoxPlan, BreaksWordsButNotWhatWrappingBreaks)
{
    for (const char16_t unit : { u'!', u'~', u'\x2E7F' })
        EXPECT_NE(Plan(std::u16string(120, unit)).shownText.find(u'\n'), std::u16string::npos) << int{ unit };
    for (const char16_t unit : { u' ', u'\x2E80', u'没' })
        EXPECT_EQ(Plan(std::u16string(60, unit)).shownText, std::u16string(60, unit)) << int{ unit };
}

TEST_F(MessageBoxPlan, BreaksBesideEveryPairAndInNone)
{
    for (const std::u16string pair :
         { u"\xD800\xDC00", u"\xD800\xDFFF", u"\xDBFF\xDC00", u"\xDBFF\xDFFF", u"\xD834\xDD1E" }) {
        const auto shown = Plan(u"i" + Repeat(pair, 60)).shownText;
        EXPECT_NE(shown.find(u'\n'), std::u16string::npos);
        for (std::size_t i = 1; i < shown.size(); ++i) {
            if (shown[i] == pair[1]) {
                ASSERT_EQ(shown[i - 1], pair[0]) << i;
            }
        }
    }
}

TEST_F(MessageBoxPlan, HasNoLineThatIsWiderThanItsRoom)
{
    const HDC context = CreateCompatibleDC(nullptr);
    SelectObject(context, m_font);
    for (const auto& text : { Repeat(u"W", 60), Repeat(u"i", 200), u"i" + Repeat(u"\xD834\xDD1E", 60) }) {
        const auto plan = Plan(text);
        std::u16string_view rest = plan.shownText;
        while (!rest.empty()) {
            const auto line = rest.substr(0, rest.find(u'\n'));
            rest.remove_prefix(std::min(rest.size(), line.size() + 1));
            SIZE size{};
            GetTextExtentExPointW(context, line.data(), static_cast<int>(line.size()), 0, nullptr, nullptr, &size);
            EXPECT_LE(size.cx, plan.message.right - plan.message.left);
        }
    }
    DeleteDC(context);
}

TEST_F(MessageBoxPlan, OfAPairThatIsWiderThanALineIsCut)
{
    LOGFONTW description{};
    description.lfHeight = -600;
    const HFONT font = CreateFontIndirectW(&description);
    EXPECT_EQ(PlanMessageBox({ Repeat(u"\xD834\xDD1E", 3), u"Title", false, 1 }, font).shownText, u"…");
    DeleteObject(font);
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
    static int Ask(UINT type, std::function<void(HWND box)> act, LPCWSTR text = TEXT("Text"),
                   LPCWSTR caption = TEXT("Title"))
    {
        s_act = std::move(act);
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, Act);
        const int answer = MessageBoxW(nullptr, text, caption, type);
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

    // The pixels of the buttons of a box without a caption, which is to be found by `caption`.
    static std::vector<std::uint16_t> ButtonsShown(UINT type, LPCWSTR caption, std::vector<int> ids)
    {
        std::vector<std::uint16_t> pixels;
        Ask(
            type,
            [&](HWND box) {
                EXPECT_EQ(FindWindowW(u"#32770", caption), box);
                for (const int id : ids) {
                    RECT rect{};
                    GetWindowRect(GetDlgItem(box, id), &rect);
                    Collect(rect, pixels);
                }
                PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
            },
            TEXT("Text"), nullptr);
        return pixels;
    }
    // The same, drawn here: the first has the focus.
    static std::vector<std::uint16_t> ButtonsDrawn(std::vector<LPCWSTR> captions)
    {
        std::vector<std::uint16_t> pixels;
        const HFONT font = user::MakeMessageFont();
        for (std::size_t i = 0; i < captions.size(); ++i) {
            const RECT rect{ 10, 10, 106, 50 };
            const HDC screen = GetDC(nullptr);
            DrawMessageBoxButton(screen, rect, captions[i],
                                 i == 0 ? user::ButtonFace::Focused : user::ButtonFace::Normal, font);
            ReleaseDC(nullptr, screen);
            Collect(rect, pixels);
        }
        DeleteObject(font);
        return pixels;
    }

private:
    static void Collect(const RECT& rect, std::vector<std::uint16_t>& pixels)
    {
        std::vector<std::uint16_t> screen(std::size_t{ kScreenWidthPx } * kScreenHeightPx);
        gdi::CopyScreen(screen);
        for (LONG y = rect.top; y < rect.bottom; ++y)
            for (LONG x = rect.left; x < rect.right; ++x)
                pixels.push_back(screen[static_cast<std::size_t>(y * kScreenWidthPx + x)]);
    }
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

TEST_F(MessageBoxOnScreen, ShowsASignWhateverIconIsAskedForAndNoneOtherwise)
{
    constexpr std::uint16_t kWarning = 0xFC64;
    for (const UINT icon : { 0U, 0x10U, 0x20U, 0x30U, 0x40U, 0x80U }) {
        std::uint16_t corner = 0;
        Ask(MB_OK | icon, [&](HWND box) {
            RECT rect{};
            GetWindowRect(box, &rect);
            corner = At(rect.left + 13, rect.top + 73); // the left end of the triangle's base
            PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
        });
        EXPECT_EQ(corner == kWarning, icon != 0) << icon;
    }
}

TEST_F(MessageBoxOnScreen, WithoutATextIsOneWithAnEmptyText)
{
    std::vector<std::vector<std::uint16_t>> pictures;
    const auto keep = [&](HWND) {
        pictures.emplace_back(std::size_t{ kScreenWidthPx } * kScreenHeightPx);
        gdi::CopyScreen(pictures.back());
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
    };
    for (const auto* const text : { static_cast<LPCWSTR>(nullptr), LPCWSTR{ u"" }, LPCWSTR{ u"x" } })
        Ask(MB_OK, keep, text);
    ASSERT_GE(pictures.size(), 3U);
    EXPECT_TRUE(pictures[0] == pictures[1]);
    EXPECT_FALSE(pictures[0] == pictures[2]);
}

TEST_F(MessageBoxOnScreen, TheExitKeyThatGoesUpEndsNothing)
{
    bool isPosted = false;
    EXPECT_EQ(Ask(MB_YESNO,
                  [&](HWND) {
                      PostMessageW(GetFocus(), isPosted ? WM_KEYDOWN : WM_KEYUP, isPosted ? VK_RETURN : VK_F24, 0);
                      isPosted = true;
                  }),
              IDYES);
}

TEST_F(MessageBoxOnScreen, SpeaksTheLanguageOfTheUserInterface)
{
    struct Case {
        LANGID language;
        LPCWSTR error;
        LPCWSTR words[4]; // OK, Cancel, Yes, No
    };
    const LANGID before = GetUserDefaultUILanguage();
    const test::ScratchDevice device;
    for (const auto& [language, error, words] : { Case{ 0x0409, u"Error", { u"OK", u"Cancel", u"Yes", u"No" } },
                                                  Case{ 0x0804, u"错误", { u"确定", u"取消", u"是", u"否" } },
                                                  Case{ 0x0404, u"錯誤", { u"確定", u"取消", u"是", u"否" } } }) {
        SetUserDefaultUILanguage(language);
        EXPECT_EQ(ButtonsShown(MB_OKCANCEL, error, { IDOK, IDCANCEL }), ButtonsDrawn({ words[0], words[1] }));
        EXPECT_EQ(ButtonsShown(MB_YESNO, error, { IDYES, IDNO }), ButtonsDrawn({ words[2], words[3] }));
    }
    SetUserDefaultUILanguage(before);
}

} // namespace
