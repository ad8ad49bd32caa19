// When what windows drew is shown: before a thread rests, and never while a window is half painted.
#include "platform/linux/display/headless_display.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

using namespace cardsong;

namespace {

constexpr std::uint16_t kWhite = 0xFFFF;

// Time passes as soon as somebody waits; what the display shows at that moment is kept.
class LookingClock final : public kernel::Clock {
public:
    explicit LookingClock(const display::HeadlessDisplay& display) : m_display(display) {}
    std::uint64_t NowMs() const override { return m_nowMs; }
    bool WaitUntil(std::unique_lock<std::mutex>&, std::condition_variable&, std::uint64_t deadlineMs,
                   const std::function<bool()>& ready) override
    {
        seen = m_display.LastFrame();
        ++waits;
        if (deadlineMs != kernel::kNever)
            m_nowMs = std::max(m_nowMs, deadlineMs);
        return ready();
    }

    display::Frame seen;
    int waits = 0;

private:
    const display::HeadlessDisplay& m_display;
    std::uint64_t m_nowMs = 1000;
};

void Fill(HDC context, const RECT& rect)
{
    FillRect(context, &rect, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
}

void FillWindow(HWND window, const RECT& rect)
{
    const HDC context = GetDC(window);
    Fill(context, rect);
    ReleaseDC(window, context);
}

// Paints its whole update region white.
std::optional<LRESULT> PaintWhite(HWND window, UINT message, WPARAM, LPARAM)
{
    if (message != WM_PAINT)
        return std::nullopt;
    PAINTSTRUCT paint{};
    Fill(BeginPaint(window, &paint), { 0, 0, 320, 240 });
    EndPaint(window, &paint);
    return 0;
}

class Frames : public testing::Test {
protected:
    Frames()
    {
        user::ResetWindows();
        gdi::ClearScreen();
        EXPECT_EQ(m_display.Start(), "");
        PumpMessages();
    }
    ~Frames() override
    {
        m_display.Stop();
        kernel::InstallClock(nullptr);
        user::ResetWindows();
    }

    static WindowOptions Shown(RECT rect, MessageHandler handler, HWND parent = nullptr)
    {
        WindowOptions options;
        options.style = WS_VISIBLE | (parent == nullptr ? WS_POPUP : WS_CHILD);
        options.rect = rect;
        options.parent = parent;
        options.handler = std::move(handler);
        return options;
    }
    static std::uint16_t At(const display::Frame& frame, int x, int y)
    {
        return frame[static_cast<std::size_t>(y * kScreenWidthPx + x)];
    }
    std::uint16_t Shows(int x, int y) const { return At(m_display.LastFrame(), x, y); }
    std::uint16_t Waiting(int x, int y) const { return At(m_clock.seen, x, y); }
    void UseClock() { kernel::InstallClock(&m_clock); }
    // Hands out one paint, to the first window that is due.
    static void PaintOne()
    {
        MSG message{};
        ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE));
        DispatchMessageW(&message);
    }

    display::HeadlessDisplay m_display;
    LookingClock m_clock{ m_display };
};

TEST_F(Frames, ASleepShowsWhatTheThreadDrew)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    UseClock();
    FillWindow(window, { 0, 0, 10, 10 });
    EXPECT_EQ(Shows(5, 5), 0);
    Sleep(50);
    EXPECT_EQ(m_clock.waits, 1);
    EXPECT_EQ(Waiting(5, 5), kWhite);
}

TEST_F(Frames, ASleepOfNoTimeShowsWhatTheThreadDrew)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    FillWindow(window, { 0, 0, 10, 10 });
    Sleep(0);
    EXPECT_EQ(Shows(5, 5), kWhite);
}

TEST_F(Frames, AWaitForAnEventShowsWhatTheThreadDrew)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    UseClock();
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    FillWindow(window, { 0, 0, 10, 10 });
    EXPECT_EQ(WaitForSingleObject(event, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(Shows(5, 5), 0) << "a look at the event is no wait";
    EXPECT_EQ(WaitForSingleObject(event, 50), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(m_clock.waits, 1);
    EXPECT_EQ(Waiting(5, 5), kWhite);
    CloseHandle(event);
}

TEST_F(Frames, AWaitForAnEventThatIsSetShowsNothing)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    const HANDLE event = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    FillWindow(window, { 0, 0, 10, 10 });
    EXPECT_EQ(WaitForSingleObject(event, INFINITE), static_cast<DWORD>(WAIT_OBJECT_0));
    EXPECT_EQ(Shows(5, 5), 0);
    CloseHandle(event);
}

TEST_F(Frames, ASleepAmidAPaintShowsNothing)
{
    UseClock();
    TestWindow window(
        Shown({ 0, 0, 100, 100 }, [](HWND painted, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message != WM_PAINT)
                return std::nullopt;
            PAINTSTRUCT paint{};
            const HDC context = BeginPaint(painted, &paint);
            Fill(context, { 0, 0, 50, 100 });
            Sleep(50);
            Fill(context, { 50, 0, 100, 100 });
            EndPaint(painted, &paint);
            return 0;
        }));
    UpdateWindow(window);
    EXPECT_EQ(m_clock.waits, 1);
    EXPECT_EQ(Waiting(5, 5), 0);
    EXPECT_EQ(Shows(5, 5), kWhite);
    EXPECT_EQ(Shows(99, 5), kWhite);
}

TEST_F(Frames, ASleepBetweenThePaintsOfAWindowAndOfItsChildShowsNothing)
{
    UseClock();
    TestWindow parent(Shown({ 0, 0, 100, 100 }, PaintWhite));
    TestWindow child(Shown({ 10, 10, 20, 20 }, PaintWhite, parent));
    PaintOne();
    ASSERT_EQ(parent.Count(WM_PAINT), 1);
    ASSERT_EQ(child.Count(WM_PAINT), 0);
    Sleep(50);
    EXPECT_EQ(Waiting(5, 5), 0);
    PaintOne();
    Sleep(50);
    EXPECT_EQ(Waiting(5, 5), kWhite);
}

TEST_F(Frames, AWindowThatIsHiddenHalfPaintedHoldsNothingBack)
{
    TestWindow parent(Shown({ 0, 0, 100, 100 }, PaintWhite));
    TestWindow child(Shown({ 10, 10, 20, 20 }, PaintWhite, parent));
    TestWindow other(Shown({ 200, 0, 50, 50 }, JustValidate));
    ValidateRect(other, nullptr);
    PaintOne();
    FillWindow(other, { 0, 0, 10, 10 });
    Sleep(0);
    EXPECT_EQ(Shows(205, 5), 0);
    ShowWindow(parent, SW_HIDE);
    Sleep(0);
    EXPECT_EQ(Shows(205, 5), kWhite);
}

TEST_F(Frames, UpdatingAWindowShowsItAtOnce)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, PaintWhite));
    EXPECT_EQ(Shows(5, 5), 0);
    UpdateWindow(window);
    EXPECT_EQ(Shows(5, 5), kWhite);
}

TEST_F(Frames, UpdatingAWindowWaitsForTheOthersThatOweAPaint)
{
    UseClock();
    TestWindow other(Shown({ 200, 0, 50, 50 }, PaintWhite));
    TestWindow window(Shown({ 0, 0, 100, 100 }, PaintWhite));
    UpdateWindow(window);
    EXPECT_EQ(Shows(5, 5), 0);
    Sleep(50);
    EXPECT_EQ(Waiting(5, 5), kWhite) << "no window is half painted, and the thread rests";
    UpdateWindow(other);
    EXPECT_EQ(Shows(205, 5), kWhite);
}

TEST_F(Frames, UpdatingAWindowAmidADrawingShowsNothing)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, PaintWhite));
    TestWindow drawn(Shown({ 200, 0, 50, 50 }, JustValidate));
    ValidateRect(drawn, nullptr);
    const HDC context = GetDC(drawn);
    Fill(context, { 0, 0, 25, 50 });
    UpdateWindow(window);
    EXPECT_EQ(Shows(205, 5), 0);
    Fill(context, { 25, 0, 50, 50 });
    ReleaseDC(drawn, context);
    Sleep(0);
    EXPECT_EQ(Shows(205, 5), kWhite);
    EXPECT_EQ(Shows(5, 5), kWhite);
}

// A thread with a window of its own; it lives until the object goes.
class OtherThread {
public:
    explicit OtherThread(const WindowOptions& options)
    {
        std::promise<HWND> made;
        m_thread = std::thread([&made, options] {
            TestWindow window(options);
            UpdateWindow(window);
            made.set_value(window);
            MSG message{};
            while (GetMessageW(&message, nullptr, 0, 0))
                DispatchMessageW(&message);
        });
        m_window = made.get_future().get();
    }
    ~OtherThread()
    {
        PostMessageW(m_window, WM_CLOSE, 0, 0);
        m_thread.join();
    }
    operator HWND() const { return m_window; }

private:
    std::thread m_thread;
    HWND m_window = nullptr;
};

constexpr UINT kDraw = WM_USER;

TEST_F(Frames, AThreadThatDrawsIsWaitedForAndShowsTheFrameItself)
{
    std::promise<void> begun;
    std::promise<void> mayEnd;
    std::promise<void> rested;
    OtherThread other(
        Shown({ 200, 0, 50, 50 }, [&](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_CLOSE)
                PostQuitMessage(0);
            if (message != kDraw)
                return JustValidate(window, message, 0, 0);
            Sleep(0); // this rest is over when it draws
            const HDC context = GetDC(window);
            Fill(context, { 0, 0, 25, 50 });
            begun.set_value();
            mayEnd.get_future().wait();
            Fill(context, { 25, 0, 50, 50 });
            ReleaseDC(window, context);
            Sleep(0);
            rested.set_value();
            return 0;
        }));
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    PostMessageW(other, kDraw, 0, 0);
    begun.get_future().wait();
    FillWindow(window, { 0, 0, 10, 10 });
    Sleep(0);
    EXPECT_EQ(Shows(205, 5), 0);
    EXPECT_EQ(Shows(5, 5), 0);
    mayEnd.set_value();
    rested.get_future().wait();
    EXPECT_EQ(Shows(249, 5), kWhite);
    EXPECT_EQ(Shows(5, 5), kWhite);
}

TEST_F(Frames, AThreadAtRestHoldsNobodyBackWithTheContextThatItKeeps)
{
    HDC kept = nullptr;
    OtherThread other(
        Shown({ 200, 0, 50, 50 }, [&kept](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_CLOSE) {
                ReleaseDC(window, kept);
                PostQuitMessage(0);
            }
            if (message == kDraw)
                kept = GetDC(window);
            return JustValidate(window, message, 0, 0);
        }));
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    SendMessageW(other, kDraw, 0, 0);
    while (Shows(5, 5) != kWhite) { // the other thread is on its way to its next wait
        FillWindow(window, { 0, 0, 10, 10 });
        Sleep(1);
    }
}

// As an animation does: it has neither window nor message, and is given a context of the whole screen.
TEST_F(Frames, AThreadThatDrawsOnTheContextOfAnotherShowsItToo)
{
    HDC kept = nullptr;
    OtherThread other(Shown({ 200, 0, 50, 50 }, [&kept](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_CLOSE) {
            ReleaseDC(nullptr, kept);
            PostQuitMessage(0);
        }
        if (message == kDraw)
            kept = GetDC(nullptr);
        return std::nullopt;
    }));
    SendMessageW(other, kDraw, 0, 0);
    std::uint16_t shown = 0;
    std::thread([&] {
        const DWORD start = GetTickCount();
        while (Shows(5, 5) != kWhite && GetTickCount() - start < 5000) { // the other is on its way to its next wait
            Fill(kept, { 0, 0, 10, 10 });
            Sleep(1);
        }
        Fill(kept, { 20, 0, 30, 10 });
        Sleep(0);
        shown = Shows(25, 5);
    }).join();
    EXPECT_EQ(shown, kWhite);
}

TEST_F(Frames, AMessageToAnotherThreadShowsTheFrameBeforeItIsAnswered)
{
    std::uint16_t shown = 0;
    OtherThread other(
        Shown({ 200, 0, 50, 50 }, [&](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_CLOSE)
                PostQuitMessage(0);
            if (message == kDraw)
                shown = Shows(5, 5);
            return JustValidate(window, message, 0, 0);
        }));
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    FillWindow(window, { 0, 0, 10, 10 });
    SendMessageW(other, kDraw, 0, 0);
    EXPECT_EQ(shown, kWhite);
}

TEST_F(Frames, AThreadThatEndsShowsWhatItDrewLast)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    std::thread([&] { FillWindow(window, { 0, 0, 10, 10 }); }).join();
    EXPECT_EQ(Shows(5, 5), kWhite);
}

TEST_F(Frames, ADisplayThatComesLaterShowsWhatWasFinishedBefore)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    FillWindow(window, { 0, 0, 10, 10 });
    Sleep(0);
    m_display.Stop();
    display::HeadlessDisplay later;
    EXPECT_EQ(later.Start(), "");
    EXPECT_EQ(At(later.LastFrame(), 5, 5), kWhite) << "no thread has to draw or rest for it";
    later.Stop();
}

TEST_F(Frames, ADisplayThatComesBeforeAnyFrameShowsNothing)
{
    m_display.Stop();
    user::ResetWindows();
    int calls = 0;
    user::InstallPresenter([&calls] { ++calls; });
    EXPECT_EQ(calls, 0);
    user::InstallPresenter({});
}

TEST_F(Frames, ADisplayThatComesAmidAPaintWaitsForItsEnd)
{
    TestWindow window(
        Shown({ 0, 0, 100, 100 }, [this](HWND painted, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message != WM_PAINT)
                return std::nullopt;
            PAINTSTRUCT paint{};
            const HDC context = BeginPaint(painted, &paint);
            Fill(context, { 0, 0, 50, 100 });
            m_display.Stop();
            EXPECT_EQ(m_display.Start(), "");
            EXPECT_EQ(Shows(5, 5), 0);
            Fill(context, { 50, 0, 100, 100 });
            EndPaint(painted, &paint);
            return 0;
        }));
    Sleep(0); // a frame before
    UpdateWindow(window);
    EXPECT_EQ(Shows(5, 5), kWhite);
    EXPECT_EQ(Shows(99, 5), kWhite);
}

TEST_F(Frames, ADisplayThatComesBetweenThePaintsOfAWindowAndOfItsChildWaitsForTheLast)
{
    TestWindow parent(Shown({ 0, 0, 100, 100 }, PaintWhite));
    TestWindow child(Shown({ 10, 10, 20, 20 }, PaintWhite, parent));
    Sleep(0); // a frame before
    PaintOne();
    ASSERT_EQ(child.Count(WM_PAINT), 0);
    m_display.Stop();
    EXPECT_EQ(m_display.Start(), "");
    EXPECT_EQ(Shows(5, 5), 0);
    PaintOne();
    Sleep(0);
    EXPECT_EQ(Shows(5, 5), kWhite);
    EXPECT_EQ(Shows(15, 15), kWhite);
}

// Two colours take turns over a window and its child, in steps; every frame shown has one of them only.
TEST_F(Frames, NoFrameEverShowsAHalfPaintedWindow)
{
    m_display.Stop();
    std::atomic<int> white = 0;
    std::atomic<int> black = 0;
    std::atomic<int> torn = 0;
    user::InstallPresenter([&] {
        display::Frame frame;
        gdi::CopyScreen(frame);
        ++(At(frame, 0, 0) == kWhite ? white : black);
        for (const auto& [x, y] : { std::pair{ 39, 5 }, std::pair{ 15, 15 }, std::pair{ 25, 25 }, std::pair{ 5, 39 } })
            torn += At(frame, x, y) != At(frame, 0, 0) ? 1 : 0;
    });
    int turn = 0;
    const MessageHandler paint = [&turn](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_PAINT)
            return std::nullopt;
        const auto brush = static_cast<HBRUSH>(GetStockObject(turn % 2 == 0 ? WHITE_BRUSH : BLACK_BRUSH));
        PAINTSTRUCT record{};
        const HDC context = BeginPaint(window, &record);
        for (const RECT& part : { RECT{ 0, 0, 10, 40 }, RECT{ 10, 0, 40, 10 }, RECT{ 10, 10, 40, 40 } })
            FillRect(context, &part, brush);
        EndPaint(window, &record);
        return 0;
    };
    TestWindow parent(Shown({ 0, 0, 40, 40 }, paint));
    TestWindow child(Shown({ 10, 10, 20, 20 }, paint, parent));
    std::atomic<bool> ends = false;
    OtherThread other(
        Shown({ 200, 0, 50, 50 }, [](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_CLOSE)
                PostQuitMessage(0);
            return PaintWhite(window, message, 0, 0);
        }));
    std::thread restless([&] {
        while (!ends) {
            InvalidateRect(other, nullptr, FALSE);
            UpdateWindow(other);
            Sleep(0);
        }
    });
    for (turn = 0; turn < 500; ++turn) {
        InvalidateRect(parent, nullptr, FALSE);
        if (turn % 3 == 0)
            UpdateWindow(parent);
        else
            PumpMessages();
    }
    ends = true;
    restless.join();
    user::InstallPresenter({});
    EXPECT_EQ(torn, 0);
    EXPECT_GT(white, 0);
    EXPECT_GT(black, 0);
}

TEST_F(Frames, AThreadThatRestedIsWaitedForWhenItDrawsAgain)
{
    std::promise<void> begun;
    std::promise<void> mayEnd;
    std::promise<void> rested;
    OtherThread other(
        Shown({ 200, 0, 50, 50 }, [&](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_CLOSE)
                PostQuitMessage(0);
            if (message != kDraw)
                return JustValidate(window, message, 0, 0);
            FillWindow(window, { 0, 0, 1, 1 });
            Sleep(0);
            const HDC context = GetDC(window);
            Fill(context, { 0, 0, 25, 50 });
            begun.set_value();
            mayEnd.get_future().wait();
            ReleaseDC(window, context);
            Sleep(0);
            rested.set_value();
            return 0;
        }));
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    PostMessageW(other, kDraw, 0, 0);
    begun.get_future().wait();
    FillWindow(window, { 0, 0, 10, 10 });
    Sleep(0);
    EXPECT_EQ(Shows(5, 5), 0);
    mayEnd.set_value();
    rested.get_future().wait();
    EXPECT_EQ(Shows(5, 5), kWhite);
}

TEST_F(Frames, AThreadThatNeverDrewShowsWhatWaitedForIt)
{
    std::promise<void> held;
    std::promise<void> mayEnd;
    std::promise<void> rested;
    OtherThread other(
        Shown({ 200, 0, 50, 50 }, [&](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_CLOSE)
                PostQuitMessage(0);
            if (message != kDraw)
                return JustValidate(window, message, 0, 0);
            const HDC context = GetDC(window);
            held.set_value();
            mayEnd.get_future().wait();
            ReleaseDC(window, context);
            Sleep(0);
            rested.set_value();
            return 0;
        }));
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    PostMessageW(other, kDraw, 0, 0);
    held.get_future().wait();
    FillWindow(window, { 0, 0, 10, 10 });
    Sleep(0);
    EXPECT_EQ(Shows(5, 5), 0);
    mayEnd.set_value();
    rested.get_future().wait();
    EXPECT_EQ(Shows(5, 5), kWhite);
}

struct RestsAtItsEnd {
    ~RestsAtItsEnd() { Sleep(0); }
};

// Its queue is gone by then, for it was made later.
TEST_F(Frames, AThreadMayRestWhileItEnds)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, JustValidate));
    PumpMessages();
    std::thread([&] {
        static thread_local RestsAtItsEnd s_last;
        EXPECT_NE(&s_last, nullptr);
        FillWindow(window, { 0, 0, 10, 10 });
    }).join();
    EXPECT_EQ(Shows(5, 5), kWhite);
}

TEST_F(Frames, AResetForgetsWhoWasDrawing)
{
    PAINTSTRUCT paint{};
    auto before = std::make_unique<TestWindow>(Shown({ 200, 0, 50, 50 }, {}));
    BeginPaint(*before, &paint);
    GetDC(*before);
    user::ResetWindows();
    TestWindow window(Shown({ 0, 0, 100, 100 }, PaintWhite));
    UpdateWindow(window);
    EXPECT_EQ(Shows(5, 5), kWhite);
}

TEST_F(Frames, ErasingWhatIsInvalidIsNoDrawingThatGoesOn)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, PaintWhite));
    GetUpdateRect(window, nullptr, TRUE);
    UpdateWindow(window);
    EXPECT_EQ(Shows(5, 5), kWhite);
}

TEST_F(Frames, AWindowThatOwesItsNextPaintHoldsNothingBack)
{
    TestWindow window(Shown({ 0, 0, 100, 100 }, PaintWhite));
    TestWindow other(Shown({ 200, 0, 50, 50 }, JustValidate));
    PumpMessages();
    ASSERT_EQ(Shows(5, 5), kWhite);
    InvalidateRect(window, nullptr, FALSE);
    FillWindow(other, { 0, 0, 10, 10 });
    Sleep(0);
    EXPECT_EQ(Shows(205, 5), kWhite);
}

} // namespace
