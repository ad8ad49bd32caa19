// The animation by the clock: how long it waits for what, exactly. Time stands still unless a test advances it.
#include "gui/gif_animation.h"

#include "platform/linux/kernel/clock.h"
#include "tests/gif/gif_builder.h"
#include "tests/gui/window_fixture.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <thread>

using namespace cardsong;
using namespace cardsong::test;

namespace {

constexpr std::uint64_t kForever = kernel::kNever;
const std::vector<GifColor> kFourColors{ kBlack, kRed, kGreen, kBlue };

// Virtual time that notes how long each wait of another thread is meant to last.
class WatchedClock : public kernel::Clock {
public:
    std::uint64_t NowMs() const override { return m_time.NowMs(); }
    bool WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& condition, std::uint64_t deadlineMs,
                   const std::function<bool()>& ready) override
    {
        if (std::this_thread::get_id() != m_owner) {
            const std::lock_guard guard(m_mutex);
            m_waits.push_back(deadlineMs == kernel::kNever ? kForever : deadlineMs - NowMs());
            m_noted.notify_all();
        }
        return m_time.WaitUntil(lock, condition, deadlineMs, ready);
    }
    void Advance(std::uint64_t milliseconds) { m_time.Advance(milliseconds); }
    // Comes back when wait number `number`, counted from 1, has begun.
    std::uint64_t Wait(std::size_t number)
    {
        std::unique_lock lock(m_mutex);
        m_noted.wait(lock, [&] { return m_waits.size() >= number; });
        return m_waits[number - 1];
    }
    std::size_t Waits()
    {
        const std::lock_guard guard(m_mutex);
        return m_waits.size();
    }

private:
    kernel::VirtualClock m_time;
    const std::thread::id m_owner = std::this_thread::get_id();
    std::mutex m_mutex;
    std::condition_variable m_noted;
    std::vector<std::uint64_t> m_waits;
};

std::ptrdiff_t ThreadsOfThisProcess()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

GifImage Whole(std::uint8_t index)
{
    return { .width = 2, .height = 2, .indices = Bytes(4, index) };
}

GifImage Undecodable()
{
    return { .width = 0, .height = 0, .indices = { 1 } };
}

class TimedAnimation : public testing::Test {
protected:
    TimedAnimation() { kernel::InstallClock(&m_clock); }
    ~TimedAnimation() override
    {
        m_animation.Stop();
        kernel::InstallClock(nullptr);
    }

    static GifBuilder File() { return std::move(GifBuilder().Screen(2, 2, kFourColors)); }
    WString Write(const GifBuilder& builder, const std::string& name = "picture.gif")
    {
        m_device.WriteFile("user/scratch/" + name, builder.Text());
        return m_device.Path(WString(name.begin(), name.end()));
    }
    bool Start(const GifBuilder& builder) { return Start(m_animation, Write(builder)); }
    bool Start(GifAnimation& animation, const WString& path)
    {
        std::uint16_t widthPx = 0;
        std::uint16_t heightPx = 0;
        return animation.Start(m_parent.Get(), path.c_str(), widthPx, heightPx);
    }
    std::uint16_t Shown() const
    {
        const HDC context = GetDC(m_parent.Get());
        const std::uint16_t pixel = Pixel565(context, 0, 0);
        ReleaseDC(m_parent.Get(), context);
        return pixel;
    }
    void PaintOver(COLORREF color)
    {
        const HDC context = GetDC(m_parent.Get());
        const UniqueBrush brush(CreateSolidBrush(color));
        const RECT all = { 0, 0, 320, 240 };
        FillRect(context, &all, brush.Get());
        ReleaseDC(m_parent.Get(), context);
    }

    ScratchDevice m_device;
    ParentWindow m_parent;
    WatchedClock m_clock;
    GifAnimation m_animation;
};

} // namespace

TEST_F(TimedAnimation, APictureStandsForItsDelay)
{
    ASSERT_TRUE(Start(File().GraphicControl(0, 25).Image(Whole(1)).GraphicControl(0, 7).Image(Whole(2)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 250U);
    EXPECT_EQ(Shown(), kRed565);
    m_clock.Advance(249);
    EXPECT_EQ(m_clock.Waits(), 1U);
    EXPECT_EQ(Shown(), kRed565);
    m_clock.Advance(1);
    EXPECT_EQ(m_clock.Wait(2), 70U);
    EXPECT_EQ(Shown(), kGreen565);
    m_clock.Advance(70);
    EXPECT_EQ(m_clock.Wait(3), 250U);
    EXPECT_EQ(Shown(), kRed565);
}

TEST_F(TimedAnimation, DelaysOfSixToNineHundredthsStayAsTheyAre)
{
    ASSERT_TRUE(Start(
        File().GraphicControl(0, 6).Image(Whole(1)).GraphicControl(0, 9).Image(Whole(1)).GraphicControl(0, 65535).Image(
            Whole(1))));
    EXPECT_EQ(m_clock.Wait(1), 60U);
    m_clock.Advance(60);
    EXPECT_EQ(m_clock.Wait(2), 90U);
    m_clock.Advance(90);
    EXPECT_EQ(m_clock.Wait(3), 655350U);
}

TEST_F(TimedAnimation, ASinglePictureIsDrawnAgainAndAgainEachTenthOfASecondAtADelayOfFiveOrLess)
{
    for (const unsigned delay : { 0U, 5U }) {
        const std::size_t waits = m_clock.Waits();
        ASSERT_TRUE(Start(File().GraphicControl(0, delay).Image(Whole(1)).Trailer()));
        for (std::size_t round = 1; round <= 3; ++round) {
            EXPECT_EQ(m_clock.Wait(waits + round), 100U);
            EXPECT_EQ(Shown(), kRed565);
            PaintOver(RGB(0, 0, 255));
            m_clock.Advance(99);
            EXPECT_EQ(Shown(), kBlue565);
            m_clock.Advance(1);
        }
        m_animation.Stop();
    }
}

TEST_F(TimedAnimation, APictureWithoutAGraphicControlMakesRoomAtOnce)
{
    ASSERT_TRUE(Start(File().Image(Whole(1)).Image(Whole(2)).GraphicControl(0, 50).Image(Whole(3)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 500U); // two pictures and no wait before
    EXPECT_EQ(Shown(), kBlue565);
    m_clock.Advance(500);
    EXPECT_EQ(m_clock.Wait(2), 500U);
    EXPECT_EQ(Shown(), kBlue565);
}

TEST_F(TimedAnimation, PicturesWithoutAnyDelayAreDrawnWithoutEndUntilItIsStopped)
{
    ASSERT_TRUE(Start(File().Image(Whole(1)).Image(Whole(2)).Trailer()));
    for (const std::uint16_t color : { kRed565, kGreen565, kRed565, kGreen565 }) {
        while (Shown() != color)
            std::this_thread::yield();
    }
    m_animation.Stop();
    EXPECT_EQ(m_clock.Waits(), 0U);
    PaintOver(RGB(0, 0, 255));
    EXPECT_EQ(Shown(), kBlue565);
}

TEST_F(TimedAnimation, BeforeTheFirstPictureASecondPasses)
{
    PaintOver(RGB(0, 0, 255));
    ASSERT_TRUE(Start(File()
                          .Image(Undecodable())
                          .Image(Undecodable())
                          .GraphicControl(0, 30)
                          .Image(Whole(1))
                          .Image(Undecodable())
                          .Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 1000U);
    EXPECT_EQ(Shown(), kBlue565);
    m_clock.Advance(1000);
    EXPECT_EQ(m_clock.Wait(2), 1000U);
    EXPECT_EQ(Shown(), kBlue565);
    m_clock.Advance(1000);
    EXPECT_EQ(m_clock.Wait(3), 300U);
    EXPECT_EQ(Shown(), kRed565);
    m_clock.Advance(300);
    EXPECT_EQ(m_clock.Wait(4), 300U); // the last one, which is not decoded, stands as long as the one before
    EXPECT_EQ(Shown(), kRed565);
}

TEST_F(TimedAnimation, ANewRoundStartsFromTheBackground)
{
    ASSERT_TRUE(Start(GifBuilder()
                          .Screen(2, 2, kFourColors, 3)
                          .GraphicControl(0, 10)
                          .Image({ .left = 1, .top = 1, .width = 1, .height = 1, .indices = { 1 } })
                          .GraphicControl(0, 20)
                          .Image(Whole(2))
                          .Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 100U);
    EXPECT_EQ(Shown(), kBlue565);
    m_clock.Advance(100);
    EXPECT_EQ(m_clock.Wait(2), 200U);
    EXPECT_EQ(Shown(), kGreen565);
    m_clock.Advance(200);
    EXPECT_EQ(m_clock.Wait(3), 100U);
    EXPECT_EQ(Shown(), kBlue565);
}

TEST_F(TimedAnimation, AStopInTheMiddleOfALongDelayWaitsForNothing)
{
    const auto threads = ThreadsOfThisProcess();
    ASSERT_TRUE(Start(File().GraphicControl(0, 65535).Image(Whole(1)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 655350U);
    m_animation.Stop(); // the time stands still
    PaintOver(RGB(0, 0, 255));
    m_clock.Advance(2 * 655350);
    EXPECT_EQ(Shown(), kBlue565);
    EXPECT_EQ(m_clock.Waits(), 1U);
    while (ThreadsOfThisProcess() > threads) // a thread that has ended is listed for a moment yet
        std::this_thread::yield();
}

TEST_F(TimedAnimation, PausedItKeepsItsPicture)
{
    ASSERT_TRUE(Start(File().GraphicControl(0, 10).Image(Whole(1)).GraphicControl(0, 20).Image(Whole(2)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 100U);
    m_animation.Pause();
    EXPECT_EQ(m_clock.Wait(2), kForever);
    PaintOver(RGB(0, 0, 255));
    m_clock.Advance(100'000);
    EXPECT_EQ(Shown(), kBlue565);
    EXPECT_EQ(m_clock.Waits(), 2U);
}

TEST_F(TimedAnimation, ResumedAfterAPicturesTimeItShowsTheNextAtOnce)
{
    ASSERT_TRUE(Start(File().GraphicControl(0, 10).Image(Whole(1)).GraphicControl(0, 20).Image(Whole(2)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 100U);
    m_animation.Pause();
    EXPECT_EQ(m_clock.Wait(2), kForever);
    m_clock.Advance(100);
    m_animation.Resume();
    EXPECT_EQ(m_clock.Wait(3), 200U);
    EXPECT_EQ(Shown(), kGreen565);
}

TEST_F(TimedAnimation, ResumedWithinAPicturesTimeItWaitsForTheRest)
{
    ASSERT_TRUE(Start(File().GraphicControl(0, 10).Image(Whole(1)).GraphicControl(0, 20).Image(Whole(2)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 100U);
    m_animation.Pause();
    EXPECT_EQ(m_clock.Wait(2), kForever);
    m_clock.Advance(30);
    m_animation.Resume();
    EXPECT_EQ(m_clock.Wait(3), 70U);
    EXPECT_EQ(Shown(), kRed565);
}

TEST_F(TimedAnimation, PausedTwiceItIsResumedByOneCall)
{
    ASSERT_TRUE(Start(File().GraphicControl(0, 10).Image(Whole(1)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 100U);
    m_animation.Pause();
    EXPECT_EQ(m_clock.Wait(2), kForever);
    m_animation.Pause();
    EXPECT_EQ(m_clock.Wait(3), kForever);
    m_animation.Resume();
    EXPECT_EQ(m_clock.Wait(4), 100U);
}

TEST_F(TimedAnimation, APauseAlsoHoldsPicturesWithoutAnyDelay)
{
    ASSERT_TRUE(Start(File().Image(Whole(1)).Image(Whole(2)).Trailer()));
    m_animation.Pause();
    EXPECT_EQ(m_clock.Wait(1), kForever);
    PaintOver(RGB(0, 0, 255));
    EXPECT_EQ(Shown(), kBlue565);
    m_animation.Resume();
    while (Shown() != kGreen565)
        std::this_thread::yield();
}

TEST_F(TimedAnimation, APausedOneStopsWithoutWaiting)
{
    ASSERT_TRUE(Start(File().GraphicControl(0, 10).Image(Whole(1)).Trailer()));
    m_clock.Wait(1);
    m_animation.Pause();
    EXPECT_EQ(m_clock.Wait(2), kForever);
    m_animation.Stop();
    EXPECT_EQ(m_clock.Waits(), 2U);
    ASSERT_TRUE(Start(File().GraphicControl(0, 20).Image(Whole(1)).Trailer()));
    EXPECT_EQ(m_clock.Wait(3), 200U); // and the next one is not paused
}

TEST_F(TimedAnimation, AStartEndsTheOneBeforeAlsoWhenItsOwnFileCannotBeOpened)
{
    ASSERT_TRUE(Start(File().GraphicControl(0, 10).Image(Whole(1)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 100U);
    EXPECT_FALSE(Start(m_animation, m_device.Path(TEXT("missing.gif"))));
    PaintOver(RGB(0, 0, 255));
    m_clock.Advance(1000);
    EXPECT_EQ(Shown(), kBlue565);
    EXPECT_EQ(m_clock.Waits(), 1U);
}

TEST_F(TimedAnimation, AStartEndsTheOneOfAnotherOwner)
{
    GifAnimation other;
    ASSERT_TRUE(Start(other, Write(File().GraphicControl(0, 10).Image(Whole(1)).Trailer(), "other.gif")));
    EXPECT_EQ(m_clock.Wait(1), 100U);
    ASSERT_TRUE(Start(File().GraphicControl(0, 30).Image(Whole(2)).Trailer()));
    EXPECT_EQ(m_clock.Wait(2), 300U);
    m_clock.Advance(200);
    EXPECT_EQ(m_clock.Waits(), 2U);
    other.Stop(); // has nothing left to stop
    m_clock.Advance(100);
    EXPECT_EQ(m_clock.Wait(3), 300U);
    EXPECT_EQ(Shown(), kGreen565);
}

TEST_F(TimedAnimation, WithoutAWindowOrAPathNothingIsStarted)
{
    ASSERT_TRUE(Start(File().GraphicControl(0, 10).Image(Whole(1)).Trailer()));
    EXPECT_EQ(m_clock.Wait(1), 100U);
    std::uint16_t widthPx = 7;
    std::uint16_t heightPx = 9;
    const WString path = Write(File().Image(Whole(1)).Trailer());
    EXPECT_FALSE(m_animation.Start(nullptr, path.c_str(), widthPx, heightPx));
    EXPECT_FALSE(m_animation.Start(m_parent.Get(), nullptr, widthPx, heightPx));
    EXPECT_EQ(widthPx, 7);
    EXPECT_EQ(heightPx, 9);
    m_clock.Advance(100); // and the one that plays goes on
    EXPECT_EQ(m_clock.Wait(2), 100U);
}

namespace {

// Where a new object comes to stand in its table: what lives on keeps places occupied.
std::size_t FarthestEvent()
{
    std::size_t farthest = 0;
    for (int i = 0; i < 300; ++i) { // more than rest before they come back
        const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        farthest = std::max(farthest, reinterpret_cast<std::uintptr_t>(event) >> 2 & 0xFFFF);
        CloseHandle(event);
    }
    return farthest;
}

std::size_t NextDrawingObject()
{
    const UniqueBrush brush(CreateSolidBrush(0));
    return reinterpret_cast<std::uintptr_t>(brush.Get()) & 0xFFFF;
}

} // namespace

TEST_F(TimedAnimation, AHundredWindowsWithAnimationsLeaveNothingBehind)
{
    const WString path = Write(File().GraphicControl(0, 10).Image(Whole(1)).Trailer());
    const auto playInAHundredWindows = [&] {
        for (int i = 0; i < 100; ++i) {
            const std::size_t waits = m_clock.Waits();
            const HWND window = CreateWindowExW(0, TEXT("static"), TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, 20, 20,
                                                nullptr, nullptr, nullptr, nullptr);
            GifAnimation animation;
            std::uint16_t sizePx = 0;
            ASSERT_TRUE(animation.Start(window, path.c_str(), sizePx, sizePx));
            if (i % 2 == 0)
                m_clock.Wait(waits + 1);
            if (i % 3 == 0)
                animation.Pause();
            if (i % 4 != 0)
                animation.Stop();
            DestroyWindow(window); // some while theirs still plays
            EXPECT_FALSE(IsWindow(window));
        }
    };
    const auto threads = ThreadsOfThisProcess();
    playInAHundredWindows(); // the tables grow to what one animation needs
    const std::size_t farthestEvent = FarthestEvent();
    const std::size_t nextObject = NextDrawingObject();
    playInAHundredWindows();
    EXPECT_EQ(FarthestEvent(), farthestEvent);
    EXPECT_EQ(NextDrawingObject(), nextObject);
    while (ThreadsOfThisProcess() > threads)
        std::this_thread::yield();
}
