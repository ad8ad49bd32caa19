// Message boxes, answered from inside their own loop by a timer of the thread.
#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT kNotice = WM_USER + 7;

class MessageBoxes : public testing::Test {
protected:
    MessageBoxes()
    {
        WindowOptions options;
        options.style = WS_POPUP | WS_VISIBLE;
        options.handler = JustValidate;
        m_owner = std::make_unique<TestWindow>(options);
        SetActiveWindow(*m_owner);
        PumpMessages();
    }
    ~MessageBoxes() override { s_act = nullptr; }

    HWND Owner() const { return *m_owner; }

    // Shows a box and calls `act` with it from its loop, until it is gone.
    static int Ask(HWND owner, UINT type, std::function<void(HWND box)> act, LPCWSTR caption = TEXT("Title"))
    {
        s_act = std::move(act);
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, Act);
        const int answer = MessageBoxW(owner, TEXT("Text"), caption, type);
        KillTimer(nullptr, timer);
        s_act = nullptr;
        return answer;
    }
    static void Press(HWND, WPARAM key) { PostMessageW(GetFocus(), WM_KEYDOWN, key, 0); }
    // Shows a box and presses these keys, one at each tick.
    static int AnswerByKeys(HWND owner, UINT type, std::vector<WPARAM> keys)
    {
        std::size_t next = 0;
        return Ask(owner, type, [keys, &next](HWND box) {
            if (next < keys.size())
                Press(box, keys[next++]);
        });
    }

    std::unique_ptr<TestWindow> m_owner;

private:
    static void CALLBACK Act(HWND, UINT, UINT_PTR, DWORD)
    {
        const HWND box = GetActiveWindow();
        WCHAR name[16] = {};
        GetClassNameW(box, name, 16);
        if (s_act && WString(name) == TEXT("#32770"))
            s_act(box);
    }
    static inline std::function<void(HWND)> s_act;
};

TEST_F(MessageBoxes, EnterChoosesTheFirstButton)
{
    EXPECT_EQ(AnswerByKeys(Owner(), MB_OK, { VK_RETURN }), IDOK);
    EXPECT_EQ(AnswerByKeys(Owner(), MB_OKCANCEL, { VK_RETURN }), IDOK);
    EXPECT_EQ(AnswerByKeys(Owner(), MB_YESNO, { VK_RETURN }), IDYES);
    EXPECT_EQ(AnswerByKeys(Owner(), MB_OK | MB_ICONEXCLAMATION, { VK_RETURN }), IDOK);
}

TEST_F(MessageBoxes, EnterChoosesTheSecondButtonWhereThatIsTheDefault)
{
    EXPECT_EQ(AnswerByKeys(Owner(), MB_OKCANCEL | MB_DEFBUTTON2, { VK_RETURN }), IDCANCEL);
    EXPECT_EQ(AnswerByKeys(Owner(), MB_YESNO | MB_DEFBUTTON2, { VK_RETURN }), IDNO);
}

TEST_F(MessageBoxes, EscapeCancelsOrConfirmsWhatHasNoOtherAnswer)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine answers IDCANCEL for a box with OK alone";
    EXPECT_EQ(AnswerByKeys(Owner(), MB_OK, { VK_ESCAPE }), IDOK);
    EXPECT_EQ(AnswerByKeys(Owner(), MB_OKCANCEL, { VK_ESCAPE }), IDCANCEL);
}

TEST_F(MessageBoxes, EscapeDoesNotAnswerAQuestion)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine answers IDCANCEL, which the box does not offer";
    EXPECT_EQ(AnswerByKeys(Owner(), MB_YESNO, { VK_ESCAPE, VK_RETURN }), IDYES);
}

TEST_F(MessageBoxes, ArrowsAndTabGoFromButtonToButton)
{
    for (const WPARAM key : { VK_RIGHT, VK_LEFT, VK_DOWN, VK_UP, VK_TAB })
        EXPECT_EQ(AnswerByKeys(Owner(), MB_YESNO, { key, VK_RETURN }), IDNO) << key;
    EXPECT_EQ(AnswerByKeys(Owner(), MB_YESNO, { VK_TAB, VK_TAB, VK_RETURN }), IDYES);
}

TEST_F(MessageBoxes, AClickOfAButtonIsItsAnswer)
{
    for (const int id : { IDYES, IDNO }) {
        const auto click = [id](HWND box) { PostMessageW(GetDlgItem(box, id), BM_CLICK, 0, 0); };
        EXPECT_EQ(Ask(Owner(), MB_YESNO, click), id);
    }
}

TEST_F(MessageBoxes, TheOwnerIsDisabledMeanwhileAndActiveAgainBehindThem)
{
    BOOL wasEnabled = TRUE;
    Ask(Owner(), MB_OK, [&](HWND box) {
        wasEnabled = IsWindowEnabled(Owner());
        Press(box, VK_RETURN);
    });
    EXPECT_FALSE(wasEnabled);
    EXPECT_TRUE(IsWindowEnabled(Owner()));
    EXPECT_EQ(GetActiveWindow(), Owner());
}

TEST_F(MessageBoxes, AnOwnerThatWasDisabledStaysSo)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine enables it";
    EnableWindow(Owner(), FALSE);
    AnswerByKeys(Owner(), MB_OK, { VK_RETURN });
    EXPECT_FALSE(IsWindowEnabled(Owner()));
}

TEST_F(MessageBoxes, OfAChildDisableTheWindowAroundIt)
{
    WindowOptions options;
    options.style = WS_CHILD | WS_VISIBLE;
    options.parent = Owner();
    options.handler = JustValidate;
    TestWindow child(options);
    std::vector<BOOL> enabled;
    Ask(child, MB_OK, [&](HWND box) {
        enabled = { IsWindowEnabled(Owner()), IsWindowEnabled(child) };
        Press(box, VK_RETURN);
    });
    EXPECT_EQ(enabled, (std::vector<BOOL>{ FALSE, TRUE }));
    EXPECT_TRUE(IsWindowEnabled(Owner()));
}

TEST_F(MessageBoxes, NeedNoOwner)
{
    EXPECT_EQ(AnswerByKeys(nullptr, MB_OK, { VK_RETURN }), IDOK);
}

TEST_F(MessageBoxes, OfADeadOwnerAreNotShown)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine answers -1";
    const HWND dead = Owner();
    m_owner.reset();
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(MessageBoxW(dead, TEXT("Text"), TEXT("Title"), MB_OK), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
}

TEST_F(MessageBoxes, LetTheThreadsOtherWindowsWork)
{
    bool isPosted = false;
    m_owner->Forget();
    Ask(Owner(), MB_OK, [&](HWND box) {
        if (!isPosted)
            PostMessageW(Owner(), kNotice, 1, 2);
        else if (m_owner->Count(kNotice) == 1)
            Press(box, VK_RETURN);
        isPosted = true;
    });
    EXPECT_EQ(m_owner->Count(kNotice), 1);
}

TEST_F(MessageBoxes, LeaveTheWordToQuitToTheLoopOutside)
{
    bool isTold = false;
    const int answer = Ask(Owner(), MB_OK, [&](HWND) {
        if (!isTold)
            PostQuitMessage(7);
        isTold = true;
    });
    if (!cardsong::test::IsWine()) { // Wine answers IDOK and leaves the owner disabled
        EXPECT_EQ(answer, 0);
        EXPECT_TRUE(IsWindowEnabled(Owner()));
    }
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7u);
}

TEST_F(MessageBoxes, GoWithTheirOwner)
{
    const int answer = Ask(Owner(), MB_OK, [this](HWND) { DestroyWindow(Owner()); });
    EXPECT_EQ(answer, 0);
}

TEST_F(MessageBoxes, AreFoundByTheirCaption)
{
    HWND found = nullptr;
    HWND shown = nullptr;
    Ask(
        Owner(), MB_OK,
        [&](HWND box) {
            shown = box;
            found = FindWindowW(TEXT("#32770"), TEXT("Low battery"));
            Press(box, VK_RETURN);
        },
        TEXT("Low battery"));
    EXPECT_EQ(found, shown);
    EXPECT_FALSE(IsWindow(shown));
}

TEST_F(MessageBoxes, NeedNeitherTextNorCaption)
{
    EXPECT_EQ(Ask(
                  Owner(), MB_OK, [](HWND box) { Press(box, VK_RETURN); }, nullptr),
              IDOK);
}

TEST_F(MessageBoxes, StandOneAboveTheOther)
{
    int inner = 0;
    bool isInside = false;
    const HWND owner = Owner();
    const int outer = Ask(owner, MB_OKCANCEL, [&](HWND box) {
        if (!isInside) {
            isInside = true;
            inner = MessageBoxW(box, TEXT("Sure?"), TEXT("Inner"), MB_YESNO);
        } else {
            Press(box, inner == 0 ? VK_RETURN : VK_ESCAPE);
        }
    });
    EXPECT_EQ(inner, IDYES);
    EXPECT_EQ(outer, IDCANCEL);
}

TEST_F(MessageBoxes, ADefaultButtonThatThereIsNotIsTheFirst)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine chooses none then";
    constexpr UINT kThird = 0x200;
    constexpr UINT kFourth = 0x300;
    EXPECT_EQ(AnswerByKeys(Owner(), MB_OK | MB_DEFBUTTON2, { VK_RETURN }), IDOK);
    EXPECT_EQ(AnswerByKeys(Owner(), MB_YESNO | kThird, { VK_RETURN }), IDYES);
    EXPECT_EQ(AnswerByKeys(Owner(), MB_YESNO | kFourth, { VK_RETURN }), IDYES);
}

TEST_F(MessageBoxes, LetTheThreadsOtherWindowsHearCharacters)
{
    bool isPosted = false;
    m_owner->Forget();
    Ask(Owner(), MB_OK, [&](HWND box) {
        if (!isPosted)
            PostMessageW(Owner(), WM_KEYDOWN, VK_SPACE, 0x00390001);
        else
            Press(box, VK_RETURN);
        isPosted = true;
    });
    EXPECT_EQ(m_owner->Count(WM_KEYDOWN), 1);
    EXPECT_EQ(m_owner->Count(WM_CHAR), 1);
}

} // namespace
