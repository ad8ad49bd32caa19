// What of a dialog depends on the device: the pixels of its units, its font and its face; keys with Shift held.
#include "platform/linux/gdi/screen.h"
#include "platform/linux/gdi/surface.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "tests/platform/user/dialog_builder.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

using namespace cardsong;

namespace {

INT_PTR CALLBACK Decline(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

class Dialogs : public testing::Test {
protected:
    Dialogs()
    {
        user::ResetWindows();
        gdi::ClearScreen();
    }
    ~Dialogs() override { user::ResetWindows(); }

    static RECT PlaceOf(HWND window)
    {
        RECT rect{};
        GetWindowRect(window, &rect);
        return rect;
    }
    static std::uint16_t Pixel(int x, int y)
    {
        std::vector<std::uint16_t> pixels(kScreenWidthPx * kScreenHeightPx);
        gdi::CopyScreen(pixels);
        return pixels[static_cast<std::size_t>(y * kScreenWidthPx + x)];
    }
    static LONG FontHeight(HWND control)
    {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof font, &font);
        return font.lfHeight;
    }
    static BOOL Press(HWND dialog, HWND window, WPARAM key)
    {
        MSG message{};
        message.hwnd = window;
        message.message = WM_KEYDOWN;
        message.wParam = key;
        message.lParam = 1;
        return IsDialogMessageW(dialog, &message);
    }
};

TEST_F(Dialogs, FourUnitsAcrossAndEightDownAreTheSystemFontsEightBySixteenPixels)
{
    DialogBuilder builder({ WS_POPUP, 3, 4, 100, 50 });
    builder.Control(0x80, 0, 1, 5, 7, 20, 10);
    const HWND dialog = builder.Create(nullptr, Decline);
    EXPECT_EQ(PlaceOf(dialog), (RECT{ 6, 8, 206, 108 }));
    EXPECT_EQ(PlaceOf(GetDlgItem(dialog, 1)), (RECT{ 16, 22, 56, 42 }));
}

TEST_F(Dialogs, UnitsBelowZeroLieToTheLeftAndAbove)
{
    DialogBuilder builder({ WS_POPUP, -3, -4, 100, 50 });
    const HWND dialog = builder.Create(nullptr, Decline);
    EXPECT_EQ(PlaceOf(dialog), (RECT{ -6, -8, 194, 92 }));
}

TEST_F(Dialogs, AnOwnedDialogIsPlacedFromItsOwnersCornerAndAChildInItsParent)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.rect = { 30, 40, 200, 150 };
    TestWindow owner(options);
    DialogBuilder popUp({ WS_POPUP, 3, 4, 10, 10 });
    EXPECT_EQ(PlaceOf(popUp.Create(owner, Decline)), (RECT{ 36, 48, 56, 68 }));
    DialogBuilder child({ WS_CHILD, 3, 4, 10, 10 });
    EXPECT_EQ(PlaceOf(child.Create(owner, Decline)), (RECT{ 36, 48, 56, 68 }));
}

TEST_F(Dialogs, TheFontOfTheTemplateIsThatOfItsControls)
{
    DialogBuilder builder({ WS_POPUP | DS_SETFONT, 0, 0, 100, 50, TEXT(""), TEXT(""), 0, 12, TEXT("Sans") });
    builder.Button(0, 1);
    const HWND dialog = builder.Create(nullptr, Decline);
    EXPECT_EQ(FontHeight(GetDlgItem(dialog, 1)), -16); // 12 points at 96 pixels an inch
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(GetDlgItem(dialog, 1), WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_EQ(std::u16string(font.lfFaceName), u"Sans");
    DialogBuilder plain({ WS_POPUP });
    plain.Button(0, 1);
    EXPECT_EQ(SendMessageW(GetDlgItem(plain.Create(nullptr, Decline), 1), WM_GETFONT, 0, 0), 0);
}

TEST_F(Dialogs, AFontNameThatIsTooLongIsCut)
{
    const std::u16string name(40, u'x');
    DialogBuilder builder({ WS_POPUP | DS_SETFONT, 0, 0, 100, 50, TEXT(""), TEXT(""), 0, 10, name.c_str() });
    builder.Button(0, 1);
    LOGFONTW font{};
    const HWND button = GetDlgItem(builder.Create(nullptr, Decline), 1);
    GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(button, WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_EQ(std::u16string(font.lfFaceName), std::u16string(31, u'x'));
}

TEST_F(Dialogs, TheExtendedFormOfATemplateIsDeclined)
{
    DialogBuilder builder({ 0xFFFF0001 });
    EXPECT_EQ(builder.Create(nullptr, Decline), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(Dialogs, ADialogsFaceIsLightGrey)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE, 10, 10, 20, 10 });
    builder.Create(nullptr, Decline);
    PumpMessages();
    constexpr auto kLight = gdi::PixelFromColor(RGB(192, 192, 192));
    EXPECT_EQ(Pixel(20, 20), kLight);
    EXPECT_EQ(Pixel(59, 39), kLight);
    EXPECT_EQ(Pixel(60, 39), 0);
}

TEST_F(Dialogs, ADialogThatErasesSaysSo)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    const HWND dialog = builder.Create(nullptr, Decline);
    const HDC context = GetDC(dialog);
    EXPECT_EQ(SendMessageW(dialog, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 1);
    ReleaseDC(dialog, context);
}

TEST_F(Dialogs, TabWithShiftGoesBackwards)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1).Button(WS_TABSTOP, 2).Button(WS_TABSTOP, 3);
    const HWND dialog = builder.Create(nullptr, Decline);
    const auto item = [&](int id) { return GetDlgItem(dialog, id); };
    SetFocus(item(2));
    EXPECT_TRUE(Press(dialog, item(2), VK_TAB));
    EXPECT_EQ(GetFocus(), item(3));
    user::KeyDown(static_cast<UINT>(VK_SHIFT));
    PumpMessages();
    EXPECT_TRUE(Press(dialog, item(3), VK_TAB));
    EXPECT_EQ(GetFocus(), item(2));
    EXPECT_TRUE(Press(dialog, item(2), VK_TAB));
    EXPECT_EQ(GetFocus(), item(1));
}

TEST_F(Dialogs, TabWithShiftGoesBackwardsInAWindowThatIsNoDialog)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow parent(options);
    options.style = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    options.parent = parent;
    TestWindow first(options);
    TestWindow second(options);
    TestWindow third(options);
    SetFocus(second);
    EXPECT_TRUE(Press(parent, second, VK_TAB));
    EXPECT_EQ(GetFocus(), static_cast<HWND>(third));
    user::KeyDown(static_cast<UINT>(VK_SHIFT));
    PumpMessages();
    EXPECT_TRUE(Press(parent, second, VK_TAB));
    EXPECT_EQ(GetFocus(), static_cast<HWND>(first));
}

} // namespace
