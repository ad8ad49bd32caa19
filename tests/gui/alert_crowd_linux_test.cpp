// Many alerts: nothing of them is left, and no thread waits for another for ever.
#include "gui/alert_message_window.h"
#include "platform/linux/gdi/objects.h"
#include "platform/linux/user/input.h"
#include "tests/gui/alert_fixture.h"
#include "tests/platform/user/window_threads.h"

#include <random>

using namespace cardsong;
using namespace cardsong::test;

namespace {

// What the system holds for this process.
struct Holdings {
    int windows = 0;
    int threads = 0;
    std::size_t handlePlace = 0; // of the next kernel handle: tables only grow
    std::size_t objectPlace = 0; // of the next drawing object
};

Holdings LookAtHoldings()
{
    Holdings holdings;
    EnumWindows(
        [](HWND, LPARAM count) -> BOOL {
            ++*reinterpret_cast<int*>(count);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&holdings.windows));
    holdings.threads = WindowThreads();
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    holdings.handlePlace = reinterpret_cast<ULONG_PTR>(event) >> 2 & 0xFFFF;
    CloseHandle(event);
    const HBRUSH brush = CreateSolidBrush(0);
    holdings.objectPlace = reinterpret_cast<ULONG_PTR>(brush) & 0xFFFF;
    DeleteObject(brush);
    return holdings;
}

// The table of handles lets a place rest before it is used again.
constexpr std::size_t kRestingPlaces = 200;
constexpr std::size_t kObjectsAtWork = 100; // as many may be about at one moment

void ExpectNothingLeft(const Holdings& before)
{
    EXPECT_TRUE(AlertOwner::PumpUntil([&] { return WindowThreads() <= before.threads; }));
    const Holdings after = LookAtHoldings();
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_LE(after.handlePlace, before.handlePlace + kRestingPlaces);
    EXPECT_LE(after.objectPlace, before.objectPlace + kObjectsAtWork);
    EXPECT_EQ(FindWindowW(TEXT("ALERTMSGWIN"), nullptr), nullptr);
}

WString AnyText(std::mt19937& random)
{
    WString text(random() % (random() % 10 == 0 ? 5000 : 200), 0);
    for (WCHAR& unit : text) {
        switch (random() % 100) {
        case 0: unit = static_cast<WCHAR>(1 + random() % 0xFFFF); break; // few: each may ask for another font
        case 1: unit = static_cast<WCHAR>(0xD800 + random() % 0x800); break;
        case 2:
        case 3: unit = static_cast<WCHAR>(1 + random() % 32); break;
        default: unit = static_cast<WCHAR>('a' + random() % 26); break;
        }
    }
    return text;
}

// One thread's alerts: shown one after the other, and ended by an answer, from afar, by a tap or by Close.
void ShowMany(int count, unsigned seed)
{
    std::mt19937 random(seed);
    const AlertOwner owner;
    CAlertMessageWin alert;
    std::size_t answers = 0;
    for (int i = 0; i < count; ++i) {
        const int kind = static_cast<int>(random() % 6);
        const HWND window = ShowAlert(alert, owner, kind, 7);
        ASSERT_NE(window, nullptr);
        for (auto looks = random() % 3; looks > 0; --looks)
            AlertOwner::Pump();
        const auto end = random() % 4;
        answers += end < 2 ? 1 : 0;
        switch (end) {
        case 0: PostMessageW(window, WM_COMMAND, 181 + random() % 5, 0); break;
        case 1: PostMessageW(window, WM_TIMER, 100, 0); break;
        case 2: {
            std::thread stranger([window] { SendMessageW(window, WM_CLOSE, 0, 0); });
            ASSERT_TRUE(AlertOwner::PumpUntil([&] { return IsFree(alert); }));
            stranger.join();
            break;
        }
        default: EXPECT_EQ(alert.Close(), 0); break;
        }
        ASSERT_TRUE(AlertOwner::PumpUntil([&] { return IsFree(alert) && owner.heard.size() >= answers; }));
        EXPECT_EQ(owner.heard.size(), answers);
        EXPECT_FALSE(IsWindow(window));
    }
}

} // namespace

TEST(AlertCrowd, AThousandFromThreeThreadsLeaveNothingBehind)
{
    const ScratchDevice device;
    const Holdings before = LookAtHoldings();
    std::atomic<int> ended = 0;
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < 3; ++i) {
        threads.emplace_back([&ended, i] {
            ShowMany(334, i + 1);
            ++ended;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(ended, 3);
    ExpectNothingLeft(before);
}

TEST(AlertCrowd, AThousandInARowOfAnyTextLeaveNothingBehind)
{
    const ScratchDevice device;
    constexpr unsigned kSeed = 160;
    std::mt19937 random(kSeed);
    const AlertOwner owner;
    CAlertMessageWin alert;
    const Holdings before = LookAtHoldings();
    for (int i = 0; i < 1000; ++i) {
        const WString title = AnyText(random);
        const WString message = AnyText(random);
        ASSERT_EQ(alert.Prepare(owner, title.c_str(), message.c_str(), kAlertPlain, 0, 0, 0), 0);
        ASSERT_NE(alert.Show(), nullptr) << "text " << i << " of seed " << kSeed;
        ASSERT_EQ(alert.Close(), 0);
    }
    ExpectNothingLeft(before);
}

TEST(AlertCrowd, AProcessEndsWithAnAlertUp)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static CAlertMessageWin s_alert;
            s_alert.Prepare(nullptr, TEXT("a"), TEXT("b"), kAlertError, 7, 0, 0);
            std::exit(s_alert.Show() != nullptr ? 21 : 1);
        },
        testing::ExitedWithCode(21), "");
    EXPECT_EXIT(
        {
            auto* const alert = new CAlertMessageWin; // which nobody closes
            alert->Prepare(nullptr, TEXT("a"), TEXT("b"), kAlertQuestion, 7, 0, 0);
            std::_Exit(alert->Show() != nullptr ? 22 : 1);
        },
        testing::ExitedWithCode(22), "");
}
