#include "gui/alert_message_window.h"

#include "tests/gui/alert_fixture.h"

using namespace cardsong::test;

namespace {

class Alert : public testing::Test {
protected:
    // Waits until the alert has closed and its owner has heard `count` commands in all.
    [[nodiscard]] bool HasClosed(std::size_t count = 1)
    {
        return AlertOwner::PumpUntil([&] { return IsFree(m_alert) && m_owner.heard.size() == count; });
    }

    ScratchDevice m_device; // without a skin
    AlertOwner m_owner;
    CAlertMessageWin m_alert;
};

constexpr int kAllKinds[] = { kAlertError, kAlertQuestion, kAlertInfo, kAlertPlain, kAlertProcessing, kAlertBack };

} // namespace

// ---- states ----

TEST_F(Alert, IsFreeAtFirst)
{
    EXPECT_EQ(m_alert.State(), AlertState::Free);
    EXPECT_EQ(static_cast<int>(AlertState::Free), 5);
    EXPECT_EQ(m_alert.Show(), nullptr);
    EXPECT_EQ(m_alert.Close(), -1);
    EXPECT_EQ(m_alert.State(), AlertState::Free);
}

TEST_F(Alert, PreparedItIsNotPreparedAgainAndShowsNothing)
{
    EXPECT_EQ(m_alert.Prepare(m_owner, TEXT("a"), TEXT("b"), kAlertInfo, 0, 0, 0), 0);
    EXPECT_EQ(m_alert.State(), AlertState::Prepared);
    EXPECT_EQ(m_alert.Prepare(m_owner, TEXT("c"), TEXT("d"), kAlertInfo, 0, 0, 0), -1);
    EXPECT_EQ(m_alert.Close(), -1);
    EXPECT_EQ(m_alert.State(), AlertState::Prepared);
    EXPECT_EQ(FindWindowW(TEXT("ALERTMSGWIN"), nullptr), nullptr);
}

TEST_F(Alert, ASecondPrepareWhileItIsShownIsRefused)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertInfo);
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    EXPECT_EQ(m_alert.Prepare(m_owner, TEXT("c"), TEXT("d"), kAlertInfo, 0, 0, 0), -1);
    EXPECT_EQ(m_alert.Show(), nullptr);
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(m_alert.Close(), 0);
}

TEST_F(Alert, TheStatesHaveTheirNumbers)
{
    EXPECT_EQ(static_cast<int>(AlertState::Preparing), 0);
    EXPECT_EQ(static_cast<int>(AlertState::Prepared), 1);
    EXPECT_EQ(static_cast<int>(AlertState::Starting), 2);
    EXPECT_EQ(static_cast<int>(AlertState::Shown), 3);
    EXPECT_EQ(static_cast<int>(AlertState::Closing), 4);
}

TEST_F(Alert, OneThatIsPreparedAndNeverShownGoesQuietly)
{
    {
        CAlertMessageWin other;
        EXPECT_EQ(other.Prepare(m_owner, TEXT("a"), TEXT("b"), kAlertProcessing, 0, 0, 0), 0);
    }
    EXPECT_TRUE(IsWindowEnabled(m_owner));
    EXPECT_TRUE(m_owner.heard.empty());
}

// ---- its window ----

TEST_F(Alert, IsAScreenfulOnAThreadOfItsOwn)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertInfo);
    ASSERT_TRUE(IsWindow(window));
    WCHAR name[32] = {};
    GetClassNameW(window, name, 32);
    EXPECT_EQ(WString(name), TEXT("ALERTMSGWIN"));
    EXPECT_NE(GetWindowThreadProcessId(window, nullptr), GetCurrentThreadId());
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(GetParent(window), nullptr);
    RECT rect = {};
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_EQ(rect.right, 320);
    EXPECT_EQ(rect.bottom, 240);
    EXPECT_EQ(m_alert.Close(), 0);
}

TEST_F(Alert, OfTheProcessingKindIsASmallBoxOnTop)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertProcessing);
    RECT rect = {};
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect.left, 177);
    EXPECT_EQ(rect.top, 73);
    EXPECT_EQ(rect.right, 177 + 125);
    EXPECT_EQ(rect.bottom, 73 + 125);
    EXPECT_TRUE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST);
    EXPECT_EQ(m_alert.Close(), 0);
}

TEST_F(Alert, HasTheButtonsOfItsKindAtTheirPlaces)
{
    struct Expected {
        int kind;
        std::vector<std::pair<int, int>> buttons; // id, left edge
    };
    const Expected table[] = {
        { kAlertError, { { 181, 160 } } },
        { kAlertQuestion, { { 184, 20 }, { 185, 160 } } },
        { kAlertInfo, { { 181, 160 } } },
        { kAlertPlain, {} },
        { kAlertProcessing, {} },
        { kAlertBack, { { 183, 20 } } },
        { 6, {} },
        { -1, {} },
    };
    for (const Expected& expected : table) {
        const HWND window = ShowAlert(m_alert, m_owner, expected.kind);
        ASSERT_NE(window, nullptr) << expected.kind;
        std::size_t count = 0;
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
            ++count;
        EXPECT_EQ(count, expected.buttons.size()) << expected.kind;
        for (const auto& [id, left] : expected.buttons) {
            const HWND button = GetDlgItem(window, id);
            RECT rect = {};
            GetWindowRect(button, &rect);
            EXPECT_EQ(rect.left, left) << id;
            EXPECT_EQ(rect.top, 201) << id;
            EXPECT_EQ(rect.right, left + 140) << id;
            EXPECT_EQ(rect.bottom, 233) << id;
            EXPECT_TRUE(IsWindowVisible(button)) << id;
        }
        EXPECT_EQ(m_alert.Close(), 0);
    }
}

TEST_F(Alert, ErasesNothingAndGivesStaticsNoGround)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertInfo);
    EXPECT_EQ(SendMessageW(window, WM_ERASEBKGND, 0, 0), 1);
    EXPECT_EQ(SendMessageW(window, WM_CTLCOLORSTATIC, 0, 0), reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH)));
    EXPECT_EQ(m_alert.Close(), 0);
}

// ---- answers ----

TEST_F(Alert, TellsItsOwnerEachAnswerFrom181To185)
{
    for (UINT id = 181; id <= 185; ++id) {
        m_owner.heard.clear();
        const HWND window = ShowAlert(m_alert, m_owner, kAlertQuestion);
        Answer(window, id);
        ASSERT_TRUE(HasClosed());
        EXPECT_EQ(m_owner.heard, (std::vector<HeardAnswer>{ { id, window, true } })) << id;
    }
}

TEST_F(Alert, OfEveryKindMayBeAnswered)
{
    for (const int kind : kAllKinds) {
        m_owner.heard.clear();
        const HWND window = ShowAlert(m_alert, m_owner, kind);
        Answer(window, kAlertOkId);
        ASSERT_TRUE(HasClosed()) << kind;
        EXPECT_EQ(m_owner.heard, (std::vector<HeardAnswer>{ { 181, window, true } })) << kind;
    }
}

TEST_F(Alert, IsAnsweredByTheClickOfAButton)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertQuestion);
    SendMessageW(GetDlgItem(window, 185), BM_CLICK, 0, 0); // its owner waits for it, and still hears the answer
    ASSERT_TRUE(HasClosed());
    EXPECT_EQ(m_owner.heard, (std::vector<HeardAnswer>{ { 185, window, true } }));
}

TEST_F(Alert, AnAnswerThatIsSentReturnsZero)
{
    m_owner.onCommand = [](WPARAM, LPARAM) -> LRESULT { return 77; };
    const HWND window = ShowAlert(m_alert, m_owner, kAlertInfo);
    EXPECT_EQ(SendMessageW(window, WM_COMMAND, 181, 0), 0);
    EXPECT_EQ(m_owner.heard.size(), 1U);
    ASSERT_TRUE(HasClosed());
}

TEST_F(Alert, OtherCommandsAreTheOwnersAndReturnItsResult)
{
    m_owner.onCommand = [](WPARAM id, LPARAM) -> LRESULT { return static_cast<LRESULT>(id) + 1000; };
    const HWND window = ShowAlert(m_alert, m_owner, kAlertQuestion);
    for (const WPARAM id : { WPARAM{ 180 }, WPARAM{ 186 }, WPARAM{ 1 }, MAKEWPARAM(7, 3) })
        EXPECT_EQ(SendMessageW(window, WM_COMMAND, id, 55), static_cast<LRESULT>(id) + 1000);
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    EXPECT_EQ(m_owner.heard.size(), 4U);
    EXPECT_EQ(m_owner.heard[3].id, MAKEWPARAM(7, 3));
    EXPECT_EQ(m_owner.heard[3].alert, reinterpret_cast<HWND>(55));
    EXPECT_EQ(m_alert.Close(), 0);
}

TEST_F(Alert, IsFreeWhenItsOwnerHears)
{
    AlertState state = AlertState::Shown;
    m_owner.onCommand = [&](WPARAM, LPARAM) -> LRESULT {
        state = m_alert.State();
        return 0;
    };
    Answer(ShowAlert(m_alert, m_owner, kAlertInfo), kAlertOkId);
    ASSERT_TRUE(HasClosed());
    EXPECT_EQ(state, AlertState::Free);
}

TEST_F(Alert, ItsOwnerMayShowTheNextOneAtOnce)
{
    HWND next = nullptr;
    m_owner.onCommand = [&](WPARAM, LPARAM) -> LRESULT {
        if (next == nullptr)
            next = ShowAlert(m_alert, m_owner, kAlertQuestion);
        return 0;
    };
    const HWND first = ShowAlert(m_alert, m_owner, kAlertInfo);
    Answer(first, kAlertOkId);
    ASSERT_TRUE(AlertOwner::PumpUntil([&] { return next != nullptr; }));
    EXPECT_NE(next, first);
    EXPECT_TRUE(IsWindow(next));
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    Answer(next, kAlertNoId);
    ASSERT_TRUE(HasClosed(2));
    EXPECT_EQ(m_owner.heard[1], (HeardAnswer{ 185, next, true }));
}

TEST_F(Alert, ItsOwnerMayDestroyItWhenItHears)
{
    auto alert = std::make_unique<CAlertMessageWin>();
    m_owner.onCommand = [&](WPARAM, LPARAM) -> LRESULT {
        alert.reset();
        return 0;
    };
    Answer(ShowAlert(*alert, m_owner, kAlertInfo), kAlertOkId);
    ASSERT_TRUE(AlertOwner::PumpUntil([&] { return alert == nullptr; }));
    EXPECT_EQ(m_owner.heard.size(), 1U);
}

TEST_F(Alert, ItsOwnerMayShowAnotherOneWhileAnAnswerWaits)
{
    CAlertMessageWin other;
    const HWND first = ShowAlert(m_alert, m_owner, kAlertInfo);
    Answer(first, kAlertOkId); // its thread soon waits for this one, which does not look at its messages
    const HWND second = ShowAlert(other, m_owner, kAlertQuestion);
    EXPECT_TRUE(IsWindow(second));
    ASSERT_TRUE(HasClosed());
    EXPECT_EQ(m_owner.heard, (std::vector<HeardAnswer>{ { 181, first, true } }));
    EXPECT_EQ(other.Close(), 0);
}

TEST_F(Alert, OfAnAlertHearsItsAnswer)
{
    CAlertMessageWin other;
    const HWND below = ShowAlert(m_alert, m_owner, kAlertInfo);
    const HWND above = ShowAlert(other, below, kAlertQuestion);
    Answer(above, kAlertYesId); // is an answer to the one below as well
    ASSERT_TRUE(HasClosed());
    EXPECT_TRUE(IsFree(other));
    EXPECT_EQ(m_owner.heard, (std::vector<HeardAnswer>{ { 184, below, true } }));
}

TEST_F(Alert, WithoutAnOwnerIsAnsweredToNobody)
{
    const HWND window = ShowAlert(m_alert, nullptr, kAlertInfo);
    EXPECT_EQ(SendMessageW(window, WM_COMMAND, 7, 0), 0);
    Answer(window, kAlertOkId);
    ASSERT_TRUE(HasClosed(0));
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Alert, KeepsTheOwnerOfTheOneBefore)
{
    ShowAlert(m_alert, m_owner, kAlertInfo);
    EXPECT_EQ(m_alert.Close(), 0);
    const HWND window = ShowAlert(m_alert, nullptr, kAlertInfo);
    Answer(window, kAlertOkId);
    ASSERT_TRUE(HasClosed());
    EXPECT_EQ(m_owner.heard, (std::vector<HeardAnswer>{ { 181, window, true } }));
}

TEST_F(Alert, OutlivesItsOwner)
{
    auto owner = std::make_unique<AlertOwner>();
    const HWND window = ShowAlert(m_alert, *owner, kAlertInfo);
    owner.reset();
    EXPECT_TRUE(IsWindow(window));
    Answer(window, kAlertOkId);
    ASSERT_TRUE(HasClosed(0));
    EXPECT_FALSE(IsWindow(window));
}

// ---- keys ----

TEST_F(Alert, SwallowsEveryKey)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertQuestion);
    for (const WPARAM key :
         { WPARAM{ VK_RETURN }, WPARAM{ VK_ESCAPE }, WPARAM{ VK_SPACE }, WPARAM{ VK_F24 }, WPARAM{ VK_LEFT } }) {
        EXPECT_EQ(SendMessageW(window, WM_KEYDOWN, key, 0), 1);
        EXPECT_EQ(SendMessageW(window, WM_SYSKEYDOWN, key, 0), 1);
    }
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    EXPECT_TRUE(m_owner.heard.empty());
    EXPECT_EQ(m_alert.Close(), 0);
}

// ---- close ----

TEST_F(Alert, ClosedItSaysNothingToItsOwner)
{
    for (const int kind : kAllKinds) {
        const HWND window = ShowAlert(m_alert, m_owner, kind);
        EXPECT_EQ(m_alert.Close(), 0) << kind;
        EXPECT_EQ(m_alert.State(), AlertState::Free) << kind;
        EXPECT_FALSE(IsWindow(window)) << kind;
        EXPECT_EQ(m_alert.Close(), -1) << kind;
    }
    AlertOwner::Pump();
    EXPECT_TRUE(m_owner.heard.empty());
}

TEST_F(Alert, IsClosedFromAnyThread)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertInfo);
    std::atomic<int> result = 7;
    std::thread stranger([&] { result = m_alert.Close(); });
    ASSERT_TRUE(AlertOwner::PumpUntil([&] { return result != 7; }));
    stranger.join();
    EXPECT_EQ(result, 0);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Alert, IsClosedByOneOfManyThreads)
{
    ShowAlert(m_alert, m_owner, kAlertInfo);
    std::atomic<int> closed = 0;
    std::atomic<int> ended = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            closed += m_alert.Close() == 0 ? 1 : 0;
            ++ended;
        });
    }
    ASSERT_TRUE(AlertOwner::PumpUntil([&] { return ended == 4; }));
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(m_alert.State(), AlertState::Free);
}

TEST_F(Alert, IsClosedLikeAnyWindow)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertQuestion);
    PostMessageW(window, WM_CLOSE, 0, 0);
    ASSERT_TRUE(HasClosed(0));
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Alert, ThatGoesWhileItIsShownClosesItsWindow)
{
    HWND window = nullptr;
    {
        CAlertMessageWin other;
        window = ShowAlert(other, m_owner, kAlertQuestion);
        EXPECT_TRUE(IsWindow(window));
    }
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(m_owner.heard.empty());
}

TEST_F(Alert, ThatGoesTakesNoOtherAlertsClassAway)
{
    auto going = std::make_unique<CAlertMessageWin>();
    EXPECT_EQ(m_alert.Prepare(m_owner, TEXT("a"), TEXT("b"), kAlertInfo, 0, 0, 0), 0);
    going.reset();
    const HWND window = m_alert.Show();
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(m_alert.Close(), 0);
}

// ---- the processing box ----

TEST_F(Alert, OfTheProcessingKindDisablesTheActiveWindowOfItsCaller)
{
    ASSERT_EQ(GetActiveWindow(), static_cast<HWND>(m_owner));
    const HWND window = ShowAlert(m_alert, nullptr, kAlertProcessing);
    EXPECT_FALSE(IsWindowEnabled(m_owner));
    EXPECT_TRUE(IsWindowEnabled(window));
    EXPECT_EQ(m_alert.Close(), 0);
    EXPECT_TRUE(IsWindowEnabled(m_owner));
}

TEST_F(Alert, OfTheProcessingKindEnablesTheWindowAgainWhenItIsAnswered)
{
    bool isEnabled = false;
    m_owner.onCommand = [&](WPARAM, LPARAM) -> LRESULT {
        isEnabled = IsWindowEnabled(m_owner) != FALSE;
        return 0;
    };
    Answer(ShowAlert(m_alert, m_owner, kAlertProcessing), kAlertOkId);
    ASSERT_TRUE(HasClosed());
    EXPECT_TRUE(isEnabled);
}

TEST_F(Alert, OfTheProcessingKindClosesFromAThreadWhileItsCallerLooksAtMessages)
{
    ShowAlert(m_alert, m_owner, kAlertProcessing);
    std::atomic<int> result = 7;
    std::thread worker([&] { result = m_alert.Close(); });
    ASSERT_TRUE(AlertOwner::PumpUntil([&] { return result != 7; }));
    worker.join();
    EXPECT_EQ(result, 0);
    EXPECT_TRUE(IsWindowEnabled(m_owner));
}

TEST_F(Alert, OfTheProcessingKindDisablesNothingWhereNothingIsActive)
{
    std::atomic<bool> isDone = false;
    HWND window = nullptr;
    std::thread stranger([&] { // of a thread without windows
        window = ShowAlert(m_alert, nullptr, kAlertProcessing);
        m_alert.Close();
        isDone = true;
    });
    ASSERT_TRUE(AlertOwner::PumpUntil([&] { return isDone.load(); }));
    stranger.join();
    EXPECT_NE(window, nullptr);
    EXPECT_TRUE(IsWindowEnabled(m_owner));
}

TEST_F(Alert, OfAnyOtherKindDisablesNothing)
{
    for (const int kind : { kAlertError, kAlertQuestion, kAlertInfo, kAlertPlain, kAlertBack }) {
        ShowAlert(m_alert, m_owner, kind);
        EXPECT_TRUE(IsWindowEnabled(m_owner)) << kind;
        EXPECT_EQ(m_alert.Close(), 0);
    }
}

TEST_F(Alert, OfTheProcessingKindOutlivesTheWindowThatItDisabled)
{
    auto owner = std::make_unique<AlertOwner>();
    const HWND window = ShowAlert(m_alert, nullptr, kAlertProcessing);
    EXPECT_FALSE(IsWindowEnabled(*owner));
    owner.reset();
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(m_alert.Close(), 0);
}
