#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

namespace {

WNDCLASSW ClassNamed(LPCWSTR name)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = name;
    return windowClass;
}

TEST(WindowClass, RegisteringANameTwiceFails)
{
    const auto windowClass = ClassNamed(TEXT("TwiceNamed"));
    EXPECT_NE(RegisterClassW(&windowClass), 0);
    EXPECT_EQ(RegisterClassW(&windowClass), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_ALREADY_EXISTS));
    EXPECT_TRUE(UnregisterClassW(TEXT("twicenamed"), nullptr));
}

TEST(WindowClass, AClassWithAWindowCannotBeUnregistered)
{
    TestWindow window;
    EXPECT_FALSE(UnregisterClassW(window.ClassName(), nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_HAS_WINDOWS));
}

TEST(WindowClass, UnregisteringAnUnknownNameFails)
{
    EXPECT_FALSE(UnregisterClassW(TEXT("NoSuchClassAtAll"), nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_DOES_NOT_EXIST));
}

TEST(WindowClass, AWindowOfAnUnknownClassIsNotMade)
{
    EXPECT_EQ(
        CreateWindowExW(0, TEXT("NoSuchClassAtAll"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr),
        nullptr);
}

TEST(WindowClass, AWindowIsMadeByTheAtomOfItsClass)
{
    const auto windowClass = ClassNamed(TEXT("ByAtom"));
    const ATOM atom = RegisterClassW(&windowClass);
    const HWND window = CreateWindowExW(0, reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(atom)), nullptr, WS_POPUP,
                                        0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_NE(window, nullptr);
    DestroyWindow(window);
    UnregisterClassW(TEXT("ByAtom"), nullptr);
}

TEST(WindowClass, TheNameIsReadBackAsItWasRegisteredAndCutToTheBuffer)
{
    const auto windowClass = ClassNamed(TEXT("MixedCase"));
    RegisterClassW(&windowClass);
    const HWND window =
        CreateWindowExW(0, TEXT("MIXEDCASE"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    WCHAR name[32];
    EXPECT_EQ(GetClassNameW(window, name, 32), 9);
    EXPECT_EQ(WString(name), TEXT("MixedCase"));
    EXPECT_EQ(GetClassNameW(window, name, 6), 5);
    EXPECT_EQ(WString(name), TEXT("Mixed"));
    DestroyWindow(window);
    UnregisterClassW(TEXT("MixedCase"), nullptr);
}

TEST(WindowClass, AMessageNameGivesTheSameNumberToEverybody)
{
    const UINT first = RegisterWindowMessageW(TEXT("CARDSONG_TEST_{1}"));
    EXPECT_GE(first, 0xC000U);
    EXPECT_LE(first, 0xFFFFU);
    EXPECT_EQ(RegisterWindowMessageW(TEXT("cardsong_test_{1}")), first);
    EXPECT_NE(RegisterWindowMessageW(TEXT("CARDSONG_TEST_{2}")), first);
    EXPECT_EQ(RegisterWindowMessageW(TEXT("")), 0U);
}

} // namespace
