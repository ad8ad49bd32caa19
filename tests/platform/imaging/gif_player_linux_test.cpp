// Animations on the layer's own clock and screen: each frame in its time, and shown without anybody's help.
#include "platform/linux/display/headless_display.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "tests/gif/gif_builder.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

using namespace cardsong;
using namespace cardsong::test;

constexpr COLORREF kKey = RGB(255, 0, 255);
constexpr RECT kPlace = { 100, 50, 102, 51 };

// A virtual clock that tells when the animation waits for its next frame.
class WatchedClock final : public kernel::Clock {
public:
    std::uint64_t NowMs() const override { return m_clock.NowMs(); }
    bool WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& condition, std::uint64_t deadlineMs,
                   const std::function<bool()>& ready) override
    {
        {
            const std::lock_guard guard(m_mutex);
            ++(deadlineMs == kernel::kNever ? m_endlessWaits : m_waits);
            m_changed.notify_all();
        }
        return m_clock.WaitUntil(lock, condition, deadlineMs, ready);
    }
    void Advance(std::uint64_t milliseconds) { m_clock.Advance(milliseconds); }
    // Until a thread waits with a deadline for the `times`th time; five seconds at most.
    bool AwaitWaits(int times)
    {
        std::unique_lock guard(m_mutex);
        return m_changed.wait_for(guard, std::chrono::seconds(5), [&] { return m_waits >= times; });
    }
    // Until a thread waits without one.
    bool AwaitEndlessWait()
    {
        std::unique_lock guard(m_mutex);
        return m_changed.wait_for(guard, std::chrono::seconds(5), [&] { return m_endlessWaits > 0; });
    }

private:
    kernel::VirtualClock m_clock;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_waits = 0;
    int m_endlessWaits = 0;
};

// A context of the whole screen, held by a thread that is at rest from then on, as one with a window is.
class HeldScreen {
public:
    explicit HeldScreen(WatchedClock& clock)
    {
        m_thread = std::thread([this] {
            context = GetDC(nullptr);
            WaitForSingleObject(m_end, INFINITE);
            ReleaseDC(nullptr, context);
        });
        EXPECT_TRUE(clock.AwaitEndlessWait());
    }
    ~HeldScreen()
    {
        Release();
        CloseHandle(m_end);
    }
    HeldScreen(const HeldScreen&) = delete;
    HeldScreen& operator=(const HeldScreen&) = delete;
    void Release()
    {
        EventModify(m_end, EVENT_SET);
        if (m_thread.joinable())
            m_thread.join();
    }

    HDC context = nullptr;

private:
    const HANDLE m_end = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread m_thread;
};

class GifPlayer : public testing::Test {
protected:
    GifPlayer()
    {
        user::ResetWindows();
        gdi::ClearScreen();
        EXPECT_EQ(m_display.Start(), "");
        kernel::InstallClock(&m_clock);
        m_screen = std::make_unique<HeldScreen>(m_clock);
    }
    ~GifPlayer() override
    {
        StopGifAnim();
        m_screen.reset();
        kernel::InstallClock(nullptr);
        m_display.Stop();
        user::ResetWindows();
    }

    // Red for 250 ms, green for 60 ms.
    BOOL Play(int loops = -1)
    {
        const auto pixel = [](std::uint8_t index) { return GifImage{ .width = 1, .height = 1, .indices = { index } }; };
        m_device.WriteFile("user/scratch/a.gif", GifBuilder()
                                                     .Screen(2, 1, { kBlack, kRed, kGreen, kBlue })
                                                     .GraphicControl(0, 25)
                                                     .Image(pixel(1))
                                                     .GraphicControl(0, 6)
                                                     .Image(pixel(2))
                                                     .Trailer()
                                                     .Text());
        return PlayGifAnim(m_device.Path(TEXT("a.gif")).c_str(), m_screen->context, &kPlace, nullptr, 0xFFFFFFFF, loops,
                           kKey);
    }
    // What the display shows at the animation's place.
    std::uint16_t Shown() const
    {
        return m_display.LastFrame()[static_cast<std::size_t>(kPlace.top * kScreenWidthPx + kPlace.left)];
    }

    ScratchDevice m_device;
    display::HeadlessDisplay m_display;
    WatchedClock m_clock;
    std::unique_ptr<HeldScreen> m_screen;
};

TEST_F(GifPlayer, ShowsEachFrameInItsTimeWithoutAnyMessage)
{
    ASSERT_TRUE(Play());
    Sleep(0); // the first is drawn on this thread, which shows it at its rest
    EXPECT_EQ(Shown(), kRed565);
    ASSERT_TRUE(m_clock.AwaitWaits(1));
    m_clock.Advance(249);
    EXPECT_EQ(Shown(), kRed565);
    struct Step {
        std::uint64_t advanceMs;
        std::uint16_t shown;
    };
    int waits = 1;
    for (const Step& step : { Step{ 1, kGreen565 }, Step{ 60, kRed565 }, Step{ 250, kGreen565 } }) {
        m_clock.Advance(step.advanceMs);
        ASSERT_TRUE(m_clock.AwaitWaits(++waits));
        EXPECT_EQ(Shown(), step.shown) << waits;
    }
}

TEST_F(GifPlayer, DrawsOverTheWindowsOfTheScreen)
{
    ASSERT_TRUE(Play());
    std::vector<std::uint16_t> pixels(std::size_t{ kScreenWidthPx } * kScreenHeightPx);
    gdi::CopyScreen(pixels);
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), kRed565), 1);
    EXPECT_EQ(pixels[static_cast<std::size_t>(kPlace.top * kScreenWidthPx + kPlace.left)], kRed565);
}

TEST_F(GifPlayer, StopsAmidAFrameWithoutWaitingForItsTime)
{
    ASSERT_TRUE(Play());
    ASSERT_TRUE(m_clock.AwaitWaits(1));
    EXPECT_TRUE(StopGifAnim()); // the clock stands still
    m_clock.Advance(1000);
    Sleep(0);
    EXPECT_EQ(Shown(), kRed565);
}

TEST_F(GifPlayer, PlaysAsManyRoundsAsItWasAskedFor)
{
    ASSERT_TRUE(Play(2));
    int waits = 0;
    for (const std::uint64_t advanceMs : { 250, 60, 250 }) {
        ASSERT_TRUE(m_clock.AwaitWaits(++waits));
        m_clock.Advance(advanceMs);
    }
    ASSERT_TRUE(m_clock.AwaitWaits(4));
    m_clock.Advance(60);
    EXPECT_TRUE(StopGifAnim()) << "its thread has ended, and it counts as playing until it is stopped";
    Sleep(0);
    EXPECT_EQ(Shown(), kGreen565);
}

TEST_F(GifPlayer, OutlivesTheContextThatItDrawsOn)
{
    ASSERT_TRUE(Play());
    ASSERT_TRUE(m_clock.AwaitWaits(1));
    m_screen->Release();
    m_clock.Advance(250);
    EXPECT_TRUE(m_clock.AwaitWaits(2));
    EXPECT_TRUE(StopGifAnim());
}

} // namespace
