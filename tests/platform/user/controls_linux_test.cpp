// What push buttons and statics look like, pixel by pixel.
#include "platform/linux/gdi/screen.h"
#include "platform/linux/gdi/surface.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

using namespace cardsong;

namespace {

constexpr std::uint16_t kWhite = 0xFFFF;
constexpr std::uint16_t kBlack = 0;
constexpr std::uint16_t kLight = gdi::PixelFromColor(RGB(0xC0, 0xC0, 0xC0));
constexpr std::uint16_t kDark = gdi::PixelFromColor(RGB(0x40, 0x40, 0x40));

class Controls : public testing::Test {
protected:
    Controls()
    {
        user::ResetWindows();
        gdi::ClearScreen();
        m_parent = std::make_unique<TestWindow>(ParentOptions());
        PumpMessages(); // a parent that is validated validates its children
    }
    ~Controls() override
    {
        m_parent.reset();
        user::ResetWindows();
    }

    // 40 x 20 pixels at 10, 10.
    HWND Make(LPCWSTR className, DWORD style, LPCWSTR text = nullptr)
    {
        const HWND control = CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, 10, 10, 40, 20,
                                             *m_parent, nullptr, nullptr, nullptr);
        PumpMessages();
        return control;
    }
    static std::vector<std::uint16_t> Screen()
    {
        std::vector<std::uint16_t> pixels(kScreenWidthPx * kScreenHeightPx);
        gdi::CopyScreen(pixels);
        return pixels;
    }
    static std::uint16_t Of(const std::vector<std::uint16_t>& screen, int x, int y)
    {
        return screen[static_cast<std::size_t>((10 + y) * kScreenWidthPx + 10 + x)];
    }
    // Of the control.
    static std::uint16_t Pixel(int x, int y) { return Of(Screen(), x, y); }
    // How many pixels of the control's inside have that colour, three pixels away from its edges.
    static int CountInside(std::uint16_t color)
    {
        const auto screen = Screen();
        int count = 0;
        for (int y = 3; y < 17; ++y)
            for (int x = 3; x < 37; ++x)
                count += Of(screen, x, y) == color ? 1 : 0;
        return count;
    }
    // The outermost pixels of the four sides, then what lies inside: an edge `inset` pixels from the border.
    static void ExpectEdge(int inset, std::uint16_t light, std::uint16_t shade)
    {
        EXPECT_EQ(Pixel(20, inset), light) << "top";
        EXPECT_EQ(Pixel(inset, 10), light) << "left";
        EXPECT_EQ(Pixel(20, 19 - inset), shade) << "bottom";
        EXPECT_EQ(Pixel(39 - inset, 10), shade) << "right";
        EXPECT_EQ(Pixel(inset, inset), light) << "upper left corner";
        EXPECT_EQ(Pixel(39 - inset, 19 - inset), shade) << "lower right corner";
        EXPECT_EQ(Pixel(inset, 19 - inset), shade) << "lower left corner";
        EXPECT_EQ(Pixel(39 - inset, inset), shade) << "upper right corner";
        EXPECT_EQ(Pixel(20, inset + 1), kLight) << "below the top edge";
        EXPECT_EQ(Pixel(inset + 1, 10), kLight) << "beside the left edge";
        EXPECT_EQ(Pixel(20, 18 - inset), kLight) << "above the bottom edge";
        EXPECT_EQ(Pixel(38 - inset, 10), kLight) << "beside the right edge";
    }

    static WindowOptions ParentOptions()
    {
        WindowOptions options;
        options.style = WS_POPUP | WS_VISIBLE;
        options.handler = JustValidate;
        return options;
    }

    std::unique_ptr<TestWindow> m_parent;
};

TEST_F(Controls, APushButtonIsRaisedUntilItIsPushed)
{
    const HWND button = Make(u"button", BS_PUSHBUTTON);
    ExpectEdge(0, kWhite, kDark);
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
    ExpectEdge(0, kDark, kWhite);
    SendMessageW(button, BM_SETSTATE, FALSE, 0);
    ExpectEdge(0, kWhite, kDark);
}

TEST_F(Controls, TheDefaultButtonHasABlackFrameAroundItsEdge)
{
    Make(u"button", BS_DEFPUSHBUTTON);
    for (const auto& [x, y] : { std::pair{ 20, 0 }, std::pair{ 0, 10 }, std::pair{ 20, 19 }, std::pair{ 39, 10 } })
        EXPECT_EQ(Pixel(x, y), kBlack);
    ExpectEdge(1, kWhite, kDark);
}

TEST_F(Controls, TheTextOfAButtonStandsInItsMiddle)
{
    Make(u"button", BS_PUSHBUTTON, u"I");
    const auto screen = Screen();
    int left = 40;
    int right = -1;
    int top = 20;
    int bottom = -1;
    for (int y = 1; y < 19; ++y)
        for (int x = 1; x < 39; ++x)
            if (Of(screen, x, y) != kLight) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
    ASSERT_GE(right, left) << "nothing was drawn";
    EXPECT_NEAR((left + right) / 2.0, 19.5, 1.0);
    EXPECT_NEAR((top + bottom) / 2.0, 9.5, 2.0);
}

TEST_F(Controls, TheTextOfADisabledButtonIsGrey)
{
    const HWND button = Make(u"button", BS_PUSHBUTTON, u"III");
    EXPECT_GT(CountInside(kBlack), 0);
    EnableWindow(button, FALSE);
    PumpMessages();
    EXPECT_EQ(CountInside(kBlack), 0);
    EXPECT_GT(CountInside(gdi::PixelFromColor(RGB(0x80, 0x80, 0x80))), 0);
}

TEST_F(Controls, AnEmptyButtonShowsItsFaceOnly)
{
    Make(u"button", BS_PUSHBUTTON);
    EXPECT_EQ(CountInside(kLight), 14 * 34);
}

TEST_F(Controls, DrawingAButtonLeavesTheTextColourOfTheContextAlone)
{
    const HWND button = Make(u"button", BS_PUSHBUTTON, u"I");
    COLORREF before = 0;
    HDC context = nullptr;
    m_parent->Handle([&](HWND, UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_CTLCOLORBTN)
            return std::nullopt;
        context = reinterpret_cast<HDC>(wParam);
        before = SetTextColor(context, RGB(1, 2, 3));
        return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
    });
    const HDC kept = GetDC(button); // what is drawn on it is not looked at
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
    EXPECT_NE(context, nullptr);
    EXPECT_EQ(before, RGB(0, 0, 0));
    ReleaseDC(button, kept);
}

TEST_F(Controls, AStaticStandsOnTheBrushOfItsParent)
{
    m_parent->Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_CTLCOLORSTATIC)
            return reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
        return JustValidate(window, message, wParam, lParam);
    });
    Make(u"static", 0, u"I");
    EXPECT_EQ(Pixel(39, 19), kWhite);
    EXPECT_EQ(Pixel(40, 19), kBlack);
    EXPECT_GT(CountInside(kWhite), 14 * 30);
    EXPECT_LT(CountInside(kWhite), 14 * 34);
}

TEST_F(Controls, AStaticWithoutABrushStandsOnWhatIsBeneath)
{
    m_parent->Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_CTLCOLORSTATIC) {
            SetTextColor(reinterpret_cast<HDC>(wParam), RGB(255, 255, 255));
            return 0;
        }
        return JustValidate(window, message, wParam, lParam);
    });
    Make(u"static", 0, u"I");
    EXPECT_GT(CountInside(kWhite), 0);
    EXPECT_EQ(Pixel(39, 19), kBlack);
}

TEST_F(Controls, AStaticStandsOnLightGreyByDefault)
{
    Make(u"static", 0, u"I");
    EXPECT_EQ(Pixel(39, 19), kLight);
}

TEST_F(Controls, AStaticWithoutTextDrawsNothing)
{
    Make(u"static", 0);
    EXPECT_EQ(Pixel(5, 5), kBlack);
    EXPECT_EQ(m_parent->Count(WM_CTLCOLORSTATIC), 0);
}

TEST_F(Controls, ALongTextBreaksIntoLinesUnlessTheStaticIsSimple)
{
    const auto lowestDark = [] {
        const auto screen = Screen();
        int lowest = -1;
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 40; ++x)
                if (Of(screen, x, y) == kBlack)
                    lowest = y;
        return lowest;
    };
    const auto make = [&](DWORD style) {
        return CreateWindowExW(0, u"static", u"MM MM MM", WS_CHILD | WS_VISIBLE | style, 10, 10, 40, 60, *m_parent,
                               nullptr, nullptr, nullptr);
    };
    const HWND broken = make(0);
    PumpMessages();
    EXPECT_GT(lowestDark(), 25);
    DestroyWindow(broken);
    PumpMessages();
    make(SS_SIMPLE);
    PumpMessages();
    EXPECT_LT(lowestDark(), 20);
    EXPECT_GE(lowestDark(), 0);
}

TEST_F(Controls, AnAmpersandOfASimpleStaticIsShown)
{
    Make(u"static", SS_SIMPLE, u"&");
    EXPECT_GT(CountInside(kBlack), 0);
}

TEST_F(Controls, DisablingAStaticPaintsItAgain)
{
    const HWND label = Make(u"static", 0, u"a");
    EXPECT_FALSE(GetUpdateRect(label, nullptr, FALSE));
    EnableWindow(label, FALSE);
    RECT update{};
    EXPECT_TRUE(GetUpdateRect(label, &update, FALSE));
    EXPECT_EQ(update, (RECT{ 0, 0, 40, 20 }));
    PumpMessages();
    SendMessageW(label, WM_SETFONT, 0, MAKELPARAM(TRUE, 0));
    EXPECT_TRUE(GetUpdateRect(label, nullptr, FALSE));
}

TEST_F(Controls, AStaticErasesNothing)
{
    const HWND label = Make(u"static", 0);
    const HDC context = GetDC(label);
    EXPECT_EQ(SendMessageW(label, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 1);
    ReleaseDC(label, context);
    EXPECT_EQ(Pixel(5, 5), kBlack);
}

TEST_F(Controls, AControlDrawsInItsOwnFont)
{
    const auto darkPixels = [](HFONT font, HWND button) {
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
        PumpMessages();
        return CountInside(kBlack);
    };
    const HWND button = Make(u"button", BS_PUSHBUTTON, u"I");
    LOGFONTW description{};
    description.lfHeight = -8;
    const HFONT small = CreateFontIndirectW(&description);
    description.lfHeight = -14;
    const HFONT large = CreateFontIndirectW(&description);
    EXPECT_LT(darkPixels(small, button), darkPixels(large, button));
    DestroyWindow(button);
    DeleteObject(small);
    DeleteObject(large);
}

TEST_F(Controls, AButtonThatGrowsInOneDirectionIsPaintedWhole)
{
    const HWND button = Make(u"button", BS_PUSHBUTTON);
    for (const SIZE& size : { SIZE{ 50, 20 }, SIZE{ 50, 30 } }) {
        SetWindowPos(button, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        RECT update{};
        GetUpdateRect(button, &update, FALSE);
        EXPECT_EQ(update, (RECT{ 0, 0, size.cx, size.cy }));
        PumpMessages();
    }
}

TEST_F(Controls, AControlKeepsTwoLongsOfItsOwn)
{
    for (const auto* const name : { u"button", u"static" }) {
        const HWND control = Make(name, 0);
        SetLastError(0);
        GetWindowLongPtrW(control, 8);
        EXPECT_EQ(GetLastError(), 0U);
        GetWindowLongPtrW(control, 16);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_INDEX));
    }
}

TEST_F(Controls, ASimpleStaticIsOneLineWithEveryAmpersand)
{
    const auto widthOf = [this](LPCWSTR text) {
        const HWND label = Make(u"static", SS_SIMPLE, text);
        int last = 0;
        const auto screen = Screen();
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 40; ++x)
                if (Of(screen, x, y) == kBlack)
                    last = std::max(last, x);
        DestroyWindow(label);
        PumpMessages();
        return last;
    };
    EXPECT_GT(widthOf(u"W&W"), widthOf(u"WW") + 2);
    EXPECT_GT(widthOf(u"W\nW"), widthOf(u"W"));
}

TEST_F(Controls, OnlyTheLowWordAsksForANewFontToBeShown)
{
    for (const auto* const name : { u"button", u"static" }) {
        const HWND control = Make(name, 0, u"a");
        SendMessageW(control, WM_SETFONT, 0, MAKELPARAM(FALSE, TRUE));
        EXPECT_FALSE(GetUpdateRect(control, nullptr, FALSE));
        SendMessageW(control, BM_SETSTYLE, 0, MAKELPARAM(FALSE, TRUE));
        EXPECT_FALSE(GetUpdateRect(control, nullptr, FALSE));
    }
}

} // namespace
