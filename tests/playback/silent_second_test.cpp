#include "playback/media_graph_silent_second.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <vector>

namespace {

using namespace std::chrono_literals;
using cardsong::playback::SilentSecond;
using cardsong::playback::SilentTimeline;

// ---- the timeline, told its times ----

constexpr SilentTimeline::Time kStart{ 500h };

TEST(SilentTimeline, StandsAtItsBeginningUntilItRuns)
{
    SilentTimeline timeline;
    EXPECT_EQ(timeline.Position(kStart), 0.0);
    EXPECT_EQ(timeline.Position(kStart + 5s), 0.0);
    EXPECT_FALSE(timeline.EndTime());
    EXPECT_FALSE(timeline.TakeEnd(kStart + 5s));
}

TEST(SilentTimeline, RunsToItsEndInOneSecondAndStaysThere)
{
    SilentTimeline timeline;
    timeline.Run(kStart);
    EXPECT_DOUBLE_EQ(timeline.Position(kStart + 250ms), 0.25);
    EXPECT_EQ(timeline.EndTime(), kStart + 1s);
    EXPECT_EQ(timeline.Position(kStart + 1s), 1.0);
    EXPECT_EQ(timeline.Position(kStart + 9s), 1.0);
}

TEST(SilentTimeline, GivesItsEndOnceAndNotBeforeItsTime)
{
    SilentTimeline timeline;
    timeline.Run(kStart);
    EXPECT_FALSE(timeline.TakeEnd(kStart + 999ms));
    EXPECT_TRUE(timeline.TakeEnd(kStart + 1s));
    EXPECT_FALSE(timeline.TakeEnd(kStart + 1s));
    EXPECT_FALSE(timeline.EndTime());
    EXPECT_EQ(timeline.Position(kStart + 2s), 1.0);
    timeline.Pause(kStart + 2s);
    timeline.Run(kStart + 3s);
    EXPECT_FALSE(timeline.TakeEnd(kStart + 9s));
}

TEST(SilentTimeline, APauseHoldsThePlaceAndRunGoesOn)
{
    SilentTimeline timeline;
    timeline.Run(kStart);
    timeline.Pause(kStart + 400ms);
    EXPECT_DOUBLE_EQ(timeline.Position(kStart + 30s), 0.4);
    EXPECT_FALSE(timeline.TakeEnd(kStart + 30s));
    timeline.Run(kStart + 30s);
    EXPECT_FALSE(timeline.TakeEnd(kStart + 30s + 599ms));
    EXPECT_TRUE(timeline.TakeEnd(kStart + 30s + 601ms));
}

TEST(SilentTimeline, RunOfARunningOneChangesNothing)
{
    SilentTimeline timeline;
    timeline.Run(kStart);
    timeline.Run(kStart + 500ms);
    EXPECT_DOUBLE_EQ(timeline.Position(kStart + 750ms), 0.75);
}

TEST(SilentTimeline, RunAfterStopAtTheEndEndsAnew)
{
    SilentTimeline timeline;
    timeline.Run(kStart);
    EXPECT_TRUE(timeline.TakeEnd(kStart + 1s));
    timeline.Stop(kStart + 1s);
    EXPECT_FALSE(timeline.TakeEnd(kStart + 2s));
    timeline.Run(kStart + 2s);
    EXPECT_TRUE(timeline.TakeEnd(kStart + 2s));
}

TEST(SilentTimeline, PlacesOutsideAreItsBeginningAndItsEnd)
{
    SilentTimeline timeline;
    EXPECT_TRUE(timeline.GoTo(-3.0, kStart));
    EXPECT_EQ(timeline.Position(kStart), 0.0);
    EXPECT_TRUE(timeline.GoTo(1e18, kStart));
    EXPECT_EQ(timeline.Position(kStart), 1.0);
    timeline.Run(kStart);
    EXPECT_TRUE(timeline.TakeEnd(kStart));
}

TEST(SilentTimeline, APlaceThatIsNoNumberIsRefused)
{
    SilentTimeline timeline;
    ASSERT_TRUE(timeline.GoTo(0.5, kStart));
    EXPECT_FALSE(timeline.GoTo(std::numeric_limits<double>::quiet_NaN(), kStart));
    EXPECT_FALSE(timeline.GoTo(-std::numeric_limits<double>::infinity(), kStart));
    EXPECT_EQ(timeline.Position(kStart), 0.5);
}

TEST(SilentTimeline, ASeekWhileRunningMovesTheEnd)
{
    SilentTimeline timeline;
    timeline.Run(kStart);
    timeline.GoTo(0.25, kStart + 900ms);
    EXPECT_FALSE(timeline.TakeEnd(kStart + 1600ms));
    EXPECT_TRUE(timeline.TakeEnd(kStart + 1650ms));
    timeline.GoTo(0.0, kStart + 2s);
    EXPECT_EQ(timeline.EndTime(), kStart + 3s);
}

TEST(SilentTimeline, DoubleRateHalvesTheTime)
{
    SilentTimeline timeline;
    EXPECT_EQ(timeline.Rate(), 1.0);
    timeline.Run(kStart);
    EXPECT_TRUE(timeline.SetRate(2.0, kStart + 500ms));
    EXPECT_EQ(timeline.Rate(), 2.0);
    EXPECT_EQ(timeline.EndTime(), kStart + 750ms);
    EXPECT_DOUBLE_EQ(timeline.Position(kStart + 600ms), 0.7);
}

TEST(SilentTimeline, SpeedsThatAreNoneAreRefused)
{
    SilentTimeline timeline;
    for (const double rate :
         { 0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity() })
        EXPECT_FALSE(timeline.SetRate(rate, kStart)) << rate;
    EXPECT_EQ(timeline.Rate(), 1.0);
}

TEST(SilentTimeline, ASpeedCloseToZeroHasNoEndWithinAClocksReach)
{
    SilentTimeline timeline;
    timeline.Run(kStart);
    ASSERT_TRUE(timeline.SetRate(std::numeric_limits<double>::denorm_min(), kStart));
    EXPECT_FALSE(timeline.EndTime());
    EXPECT_FALSE(timeline.TakeEnd(kStart + 24h));
}

// ---- in real time: no bound can be missed by a machine that is slow ----

using Clock = std::chrono::steady_clock;

// Ends as they are told, with the time of each.
class Ends {
public:
    std::function<void()> Listener()
    {
        return [this] {
            const std::lock_guard<std::mutex> guard(m_mutex);
            m_times.push_back(Clock::now());
            m_thread = std::this_thread::get_id();
            m_changed.notify_all();
        };
    }
    bool Await(std::size_t count)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, 10s, [&] { return m_times.size() >= count; });
    }
    std::size_t Count() const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return m_times.size();
    }
    Clock::time_point Last() const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return m_times.back();
    }
    std::thread::id Thread() const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return m_thread;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Clock::time_point> m_times;
    std::thread::id m_thread;
};

TEST(SilentSecond, TellsItsEndASecondAfterItsBeginningOnAThreadOfItsOwn)
{
    Ends ends;
    SilentSecond second(ends.Listener());
    const auto before = Clock::now();
    second.Run();
    ASSERT_TRUE(ends.Await(1));
    EXPECT_GE(ends.Last() - before, 1s);
    EXPECT_NE(ends.Thread(), std::this_thread::get_id());
    EXPECT_EQ(second.Position(), 1.0);
}

TEST(SilentSecond, EndsAtOnceWhenRunFromItsEnd)
{
    Ends ends;
    SilentSecond second(ends.Listener());
    ASSERT_TRUE(second.GoTo(7.0));
    EXPECT_EQ(ends.Count(), 0U);
    second.Run();
    ASSERT_TRUE(ends.Await(1));
}

TEST(SilentSecond, ASeekOfARunningOneToItsEndEndsIt)
{
    Ends ends;
    SilentSecond second(ends.Listener());
    second.Run();
    second.GoTo(1.0);
    ASSERT_TRUE(ends.Await(1));
    second.GoTo(1.0);
    ASSERT_TRUE(ends.Await(2));
    EXPECT_EQ(ends.Count(), 2U);
}

TEST(SilentSecond, NothingIsToldOfWhatStopsBeforeItsEnd)
{
    Ends ends;
    {
        SilentSecond stopped(ends.Listener());
        SilentSecond paused(ends.Listener());
        SilentSecond destroyed(ends.Listener());
        for (SilentSecond* second : { &stopped, &paused, &destroyed }) {
            second->SetRate(0.001); // no thread is kept from here to the end
            second->Run();
        }
        stopped.Stop();
        paused.Pause();
        EXPECT_LT(stopped.Position(), 1.0);
        EXPECT_LT(paused.Position(), 1.0);
    }
    EXPECT_EQ(ends.Count(), 0U);
}

// Whether the end or the stop comes first is open; but after the stop nothing comes.
TEST(SilentSecond, AnEndThatRacesWithAStopIsToldBeforeTheStopIsBackOrNever)
{
    for (int i = 0; i < 200; ++i) {
        std::atomic<int> told = 0;
        SilentSecond second([&] { ++told; });
        second.SetRate(0.001); // so that a second end is far
        second.GoTo(1.0);
        second.Run();
        if (i % 2 == 0)
            second.Stop();
        else
            second.GoTo(0.0);
        const int toldBefore = told;
        EXPECT_LE(toldBefore, 1);
        std::this_thread::yield();
        EXPECT_EQ(told, toldBefore);
    }
}

TEST(SilentSecond, AnEndThatRacesWithItsDestructionIsNotToldAfterIt)
{
    for (int i = 0; i < 200; ++i) {
        auto listens = std::make_unique<std::atomic<bool>>(true);
        {
            SilentSecond second([&] { EXPECT_TRUE(*listens); });
            second.GoTo(1.0);
            second.Run();
        }
        listens.reset(); // a later call would reach freed memory
    }
}

TEST(SilentSecond, MayBeCalledFromManyThreadsAtOnce)
{
    Ends ends;
    SilentSecond second(ends.Listener());
    std::vector<std::thread> callers;
    for (int caller = 0; caller < 4; ++caller)
        callers.emplace_back([&second, caller] {
            for (int i = 0; i < 300; ++i) {
                second.Run();
                second.GoTo(i % 3 * 0.5);
                EXPECT_GE(second.Position(), 0.0);
                EXPECT_LE(second.Position(), 1.0);
                second.SetRate(1.0 + caller);
                caller % 2 == 0 ? second.Pause() : second.Stop();
            }
        });
    for (std::thread& caller : callers)
        caller.join();
    EXPECT_GE(second.Rate(), 1.0);
}

} // namespace
