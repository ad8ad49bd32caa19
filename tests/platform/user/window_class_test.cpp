#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

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

TEST(WindowClass, ANumberUpToSixteenBitsIsAnAtomAndNoText)
{
    const auto lastAtom = reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(0xFFFF));
    SetLastError(0);
    EXPECT_FALSE(UnregisterClassW(lastAtom, nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_DOES_NOT_EXIST));
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
    SetLastError(0);
    EXPECT_EQ(RegisterWindowMessageW(TEXT("")), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_NAME));
}

TEST(WindowClass, AnIncompleteClassIsNotRegistered)
{
    const auto refused = [](WNDCLASSW windowClass) {
        SetLastError(0);
        return RegisterClassW(&windowClass) == 0 && GetLastError() == ERROR_INVALID_PARAMETER;
    };
    auto negative = ClassNamed(TEXT("Incomplete"));
    negative.cbWndExtra = -1;
    EXPECT_TRUE(refused(negative));
    negative.cbWndExtra = 0;
    negative.cbClsExtra = -1;
    EXPECT_TRUE(refused(negative));
    EXPECT_FALSE(UnregisterClassW(TEXT("Incomplete"), nullptr));
}

TEST(WindowClass, EachClassHasAnAtomOfItsOwn)
{
    const auto first = ClassNamed(TEXT("FirstAtom"));
    const auto second = ClassNamed(TEXT("SecondAtom"));
    const ATOM firstAtom = RegisterClassW(&first);
    const ATOM secondAtom = RegisterClassW(&second);
    EXPECT_NE(firstAtom, secondAtom);
    const auto byAtom = [](ATOM atom) { return reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(atom)); };
    const HWND window =
        CreateWindowExW(0, byAtom(secondAtom), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    WCHAR name[32];
    GetClassNameW(window, name, 32);
    EXPECT_EQ(WString(name), TEXT("SecondAtom"));
    DestroyWindow(window);
    EXPECT_TRUE(UnregisterClassW(byAtom(firstAtom), nullptr));
    EXPECT_FALSE(UnregisterClassW(TEXT("FirstAtom"), nullptr));
    EXPECT_TRUE(UnregisterClassW(TEXT("SecondAtom"), nullptr));
    EXPECT_EQ(FindWindowW(byAtom(firstAtom), nullptr), nullptr);
}

TEST(WindowClass, TheStyleOfTheClassIsItsWindows)
{
    WindowOptions options;
    options.background = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow erasing(options);
    const HDC context = GetDC(erasing);
    EXPECT_EQ(SendMessageW(erasing, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 1);
    ReleaseDC(erasing, context);
    options.background = nullptr;
    TestWindow bare(options);
    const HDC other = GetDC(bare);
    EXPECT_EQ(SendMessageW(bare, WM_ERASEBKGND, reinterpret_cast<WPARAM>(other), 0), 0);
    ReleaseDC(bare, other);
}

TEST(WindowClass, AMessageNameHasTwoHundredAndFiftyFiveCharactersAtMost)
{
    const WString longest(255, static_cast<WCHAR>('n'));
    EXPECT_GE(RegisterWindowMessageW(longest.c_str()), 0xC000U);
    const WString tooLong(256, static_cast<WCHAR>('n'));
    SetLastError(0);
    EXPECT_EQ(RegisterWindowMessageW(tooLong.c_str()), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(RegisterWindowMessageW(nullptr), 0U);
}

TEST(WindowClass, ClassesComeAndGoWithoutEnd)
{
    WNDCLASSW kept{};
    kept.lpfnWndProc = DefWindowProcW;
    kept.lpszClassName = TEXT("KeptAllTheTime");
    const ATOM keptAtom = RegisterClassW(&kept);
    ASSERT_NE(keptAtom, 0);
    WNDCLASSW passing = kept;
    passing.lpszClassName = TEXT("ComesAndGoes");
    for (int i = 0; i < 20'000; ++i) { // more than there are atoms
        const ATOM atom = RegisterClassW(&passing);
        ASSERT_GE(atom, 0xC000) << i;
        ASSERT_NE(atom, keptAtom) << i;
        ASSERT_TRUE(UnregisterClassW(passing.lpszClassName, nullptr)) << i;
    }
    EXPECT_TRUE(UnregisterClassW(kept.lpszClassName, nullptr));
}

TEST(WindowClass, AClassNeedsAProcedure)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine registers it";
    auto incomplete = ClassNamed(TEXT("WithoutProcedure"));
    incomplete.lpfnWndProc = nullptr;
    SetLastError(0);
    EXPECT_EQ(RegisterClassW(&incomplete), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_FALSE(UnregisterClassW(TEXT("WithoutProcedure"), nullptr));
}

TEST(WindowClass, AWindowHasFourThousandAndNinetySixBytesOfItsOwnAtMost)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine gives it more";
    auto large = ClassNamed(TEXT("Large"));
    large.cbWndExtra = 4097;
    SetLastError(0);
    EXPECT_EQ(RegisterClassW(&large), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    large.cbWndExtra = 4096;
    EXPECT_NE(RegisterClassW(&large), 0);
    EXPECT_TRUE(UnregisterClassW(TEXT("Large"), nullptr));
}

TEST(WindowClass, TheSystemsOwnClassesStay)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine takes them away";
    for (const LPCWSTR name : { TEXT("button"), TEXT("static"), TEXT("#32770") }) {
        EXPECT_FALSE(UnregisterClassW(name, nullptr));
        const HWND window = CreateWindowExW(0, name, nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        EXPECT_NE(window, nullptr);
        DestroyWindow(window);
    }
}

TEST(WindowClass, SuccessLeavesTheLastErrorAlone)
{
    const auto windowClass = ClassNamed(TEXT("WithoutError"));
    SetLastError(77);
    EXPECT_NE(RegisterClassW(&windowClass), 0);
    EXPECT_EQ(GetLastError(), 77U);
    EXPECT_EQ(UnregisterClassW(TEXT("WithoutError"), nullptr), TRUE);
    EXPECT_EQ(FindWindowW(TEXT("WithoutError"), nullptr), nullptr);
}

TEST(WindowClass, NoClassIsNotRegistered)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine reads it";
    SetLastError(0);
    EXPECT_EQ(RegisterClassW(nullptr), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

} // namespace
