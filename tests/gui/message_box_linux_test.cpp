// What the system's message box is asked to show: this program has one of its own, which only remembers.
#include "gui/message_box.h"

#include <gtest/gtest.h>

namespace {

struct Shown {
    HWND owner = nullptr;
    WString text;
    WString caption;
    UINT type = 0;
    int times = 0;
};
Shown g_shown;

} // namespace

int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    g_shown = { owner, text, caption, type, g_shown.times + 1 };
    return IDOK;
}

namespace {

class GuiMessageBox : public testing::Test {
protected:
    GuiMessageBox() { g_shown = {}; }
};

TEST_F(GuiMessageBox, ShowsTheFormattedTextUnderTheCaptionGuiWithAnExclamationSign)
{
    const auto owner = reinterpret_cast<HWND>(static_cast<LONG_PTR>(0x1234));
    EXPECT_EQ(ShowMessageBox(owner, TEXT("%s: %d of 0x%04X"), TEXT("卡"), -7, 0xAB), IDOK);
    EXPECT_EQ(g_shown.times, 1);
    EXPECT_EQ(g_shown.owner, owner);
    EXPECT_EQ(g_shown.text, TEXT("卡: -7 of 0x00AB"));
    EXPECT_EQ(g_shown.caption, TEXT("GUI"));
    EXPECT_EQ(g_shown.type, 48u);
}

TEST_F(GuiMessageBox, TakesATextOf1023UnitsWhole)
{
    const WString text(1023, TEXT('x'));
    ShowMessageBox(nullptr, TEXT("%s"), text.c_str());
    EXPECT_EQ(g_shown.text, text);
}

TEST_F(GuiMessageBox, CutsALongerTextAt1023Units)
{
    for (const std::size_t units : { 1024, 1025, 5000, 1'000'000 }) {
        const WString text(units, TEXT('x'));
        ShowMessageBox(nullptr, TEXT("%s"), text.c_str());
        EXPECT_EQ(g_shown.text, text.substr(0, 1023)) << units;
    }
    const WString wide = WString(600, TEXT('a')) + WString(600, TEXT('b'));
    ShowMessageBox(nullptr, wide.c_str()); // the format itself
    EXPECT_EQ(g_shown.text, wide.substr(0, 1023));
    ShowMessageBox(nullptr, TEXT("%2000d!"), 1); // a width that a format asks for
    EXPECT_EQ(g_shown.text, WString(1023, TEXT(' ')));
}

TEST_F(GuiMessageBox, ShowsAnEmptyText)
{
    ShowMessageBox(nullptr, TEXT(""));
    EXPECT_EQ(g_shown.text, WString());
    EXPECT_EQ(g_shown.times, 1);
}

} // namespace
