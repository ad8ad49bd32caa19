#include "lyrics/lyrics_marquee.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr RECT kStrip = { 0, 0, 250, 70 };
constexpr LONG kStep = 50;

bool Is(const std::optional<RECT>& rect, LONG left, LONG right)
{
    return rect && rect->left == left && rect->top == 0 && rect->right == right && rect->bottom == 70;
}

class Marquee : public ::testing::Test {
protected:
    void Start(std::int32_t index, const MarqueeLine& line) { m_marquee.StartLine(index, line, kStrip); }
    MarqueeFrame Frame(HasNeighbour previous = HasNeighbour::Yes, HasNeighbour next = HasNeighbour::Yes)
    {
        return m_marquee.TakeFrame(previous, next);
    }

    LyricsPositions m_positions;
    LyricsMarquee m_marquee{ m_positions };
};

TEST_F(Marquee, AFirstLineEntersFromTheRightAndIsGoneWhenItsTimeIsOver)
{
    Start(0, { 0, 5000, 100 });
    EXPECT_EQ(m_positions, (LyricsPositions{ 0, 225, 225, -1 }));
    EXPECT_EQ(m_marquee.Speed(), 325.0 / 5000);
    EXPECT_FALSE(m_marquee.MoveTo(0));
    EXPECT_TRUE(m_marquee.MoveTo(1000));
    EXPECT_EQ(m_positions.lineX, 160);
    EXPECT_TRUE(m_marquee.MoveTo(5000));
    EXPECT_EQ(m_positions.lineX, -100);
}

TEST_F(Marquee, TheWayIsCutToWholePixels)
{
    Start(0, { 1000, 2000, 100 });       // 0.325 a millisecond
    EXPECT_TRUE(m_marquee.MoveTo(1010)); // 3.25
    EXPECT_EQ(m_positions.lineX, 222);
    EXPECT_TRUE(m_marquee.MoveTo(1018)); // 5.85
    EXPECT_EQ(m_positions.lineX, 220);
}

TEST_F(Marquee, LessThanTwoPixelsAreNotDrawn)
{
    Start(0, { 0, 3250, 100 }); // 0.1 a millisecond
    EXPECT_FALSE(m_marquee.MoveTo(19));
    EXPECT_EQ(m_positions.lineX, 225);
    EXPECT_TRUE(m_marquee.MoveTo(20));
    EXPECT_EQ(m_positions.lineX, 223);
    EXPECT_FALSE(m_marquee.MoveTo(39));
    EXPECT_TRUE(m_marquee.MoveTo(40));
    EXPECT_FALSE(m_marquee.MoveTo(30)); // back by one
    EXPECT_TRUE(m_marquee.MoveTo(20));
    EXPECT_EQ(m_positions.lineX, 223);
}

TEST_F(Marquee, TheNextLineIsShownOnceAStepIsFreeBehindTheCurrentOne)
{
    Start(0, { 0, 3250, 100 });
    m_marquee.MoveTo(1250); // x = 100: the next one would begin at the right edge
    EXPECT_FALSE(Frame().next);
    EXPECT_EQ(m_positions.nextLineLeft, -1);
    m_marquee.MoveTo(1270);
    const MarqueeFrame frame = Frame();
    EXPECT_TRUE(Is(frame.current, 98, 198));
    EXPECT_TRUE(Is(frame.next, 248, 250));
    EXPECT_EQ(m_positions.nextLineLeft, 248);
    EXPECT_FALSE(Frame(HasNeighbour::Yes, HasNeighbour::No).next);
    EXPECT_EQ(m_positions.nextLineLeft, 248);
}

TEST_F(Marquee, ThePreviousLineHasTheRoomUpToAStepBeforeTheCurrentOne)
{
    Start(0, { 0, 3250, 100 });
    EXPECT_TRUE(Is(Frame().previous, 0, 175));
    EXPECT_FALSE(Frame(HasNeighbour::No).previous);
    m_marquee.MoveTo(1740); // x = 51
    EXPECT_TRUE(Is(Frame().previous, 0, 1));
    m_marquee.MoveTo(1760);
    EXPECT_FALSE(Frame().previous);
}

TEST_F(Marquee, ALineTakesOverWhereItStoodAsTheNextOne)
{
    Start(0, { 0, 5000, 100 });
    m_marquee.MoveTo(4900); // 318
    EXPECT_EQ(m_positions.lineX, -93);
    EXPECT_TRUE(Is(Frame().next, 57, 250));
    Start(1, { 5000, 7000, 200 });
    EXPECT_EQ(m_positions.startX, 57);
    EXPECT_EQ(m_marquee.Speed(), (200 + 57 - 75) / 2000.0);
    m_marquee.MoveTo(7000);
    EXPECT_EQ(m_positions.lineX + 200, 75); // a step and a half are left, and the next one stands in the middle
    EXPECT_TRUE(Is(Frame().next, 125, 250));
}

TEST_F(Marquee, AShortLineTakesItsPlaceByMovingToTheRight)
{
    m_positions.currentLine = 0;
    m_positions.nextLineLeft = 52;
    Start(1, { 5000, 6000, 9 });
    EXPECT_EQ(m_marquee.Speed(), -14 / 1000.0);
    m_marquee.MoveTo(5500);
    EXPECT_EQ(m_positions.lineX, 59);
    m_marquee.MoveTo(6000);
    EXPECT_EQ(m_positions.lineX, 66);
}

TEST_F(Marquee, ALineAtTheLeftEdgeWasNotTheNextOne)
{
    m_positions.currentLine = 0;
    m_positions.nextLineLeft = 0;
    Start(1, { 0, 1000, 100 });
    EXPECT_EQ(m_positions.startX, 225);
}

TEST_F(Marquee, TheLastLineKeepsTheSpeedAndStopsWhenAStepIsFreeToItsRight)
{
    Start(0, { 0, 3250, 100 });
    m_positions.nextLineLeft = 180;
    Start(1, { 3250, std::nullopt, 60 });
    EXPECT_EQ(m_marquee.Speed(), 0.1);
    m_marquee.MoveTo(3650);
    EXPECT_EQ(m_positions.lineX, 140); // its right edge is not yet below 200
    m_marquee.MoveTo(3670);
    EXPECT_EQ(m_positions.lineX, 138);
    EXPECT_FALSE(m_marquee.MoveTo(10'000));
    EXPECT_FALSE(m_marquee.MoveTo(std::numeric_limits<std::int32_t>::max()));
    EXPECT_FALSE(m_marquee.MoveTo(3250)); // nor back again
    EXPECT_EQ(m_positions.lineX, 138);
}

TEST_F(Marquee, AJumpIntoTheLastLineShowsItWhereItStops)
{
    Start(0, { 0, 3250, 100 });
    Start(1, { 3250, std::nullopt, 60 });
    EXPECT_TRUE(m_marquee.MoveTo(600'000));
    EXPECT_EQ(m_positions.lineX, 138);
    EXPECT_LT(60 + m_positions.lineX, 250 - kStep);
}

TEST_F(Marquee, ALastLineThatBeginsBeyondItsStopStaysThere)
{
    Start(0, { 0, 3250, 100 });
    m_positions.nextLineLeft = 51;
    Start(1, { 3250, std::nullopt, 60 });
    EXPECT_FALSE(m_marquee.MoveTo(9000));
    EXPECT_EQ(m_positions.lineX, 51);
}

TEST_F(Marquee, AnOnlyLineStandsInTheMiddle)
{
    Start(0, { 0, std::nullopt, 101 });
    EXPECT_EQ(m_marquee.Speed(), std::nullopt);
    EXPECT_FALSE(m_marquee.MoveTo(100'000));
    EXPECT_TRUE(Is(Frame(HasNeighbour::No, HasNeighbour::No).current, 74, 175));
}

TEST_F(Marquee, AnOnlyLineThatIsWiderThanTheStripStandsAtItsLeftEdge)
{
    Start(0, { 0, std::nullopt, 251 });
    EXPECT_TRUE(Is(Frame(HasNeighbour::No, HasNeighbour::No).current, 0, 251));
    m_positions = {};
    Start(0, { 0, std::nullopt, 249 });
    EXPECT_TRUE(Is(Frame(HasNeighbour::No, HasNeighbour::No).current, 0, 249));
}

TEST_F(Marquee, TheOnlyLineOfASongHasNoSpeedFromTheSongBefore)
{
    Start(0, { 0, 3250, 100 });
    m_positions = {}; // the list was cleared
    Start(0, { 0, std::nullopt, 100 });
    EXPECT_EQ(m_marquee.Speed(), std::nullopt);
    EXPECT_EQ(m_positions.lineX, 75);
}

TEST_F(Marquee, ALineOfOneMillisecondHasASpeedThatIsANumber)
{
    Start(0, { 6'039'989, 6'039'990, 30'000 });
    EXPECT_EQ(m_marquee.Speed(), 30'225.0);
    Start(1, { std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), 0 });
    EXPECT_TRUE(std::isfinite(*m_marquee.Speed()));
}

TEST_F(Marquee, AClockThatIsFarOffLeavesTheLineFarOffButNowhereElse)
{
    Start(0, { 0, 1, 30'000 });
    m_marquee.MoveTo(std::numeric_limits<std::int64_t>::max() / 4);
    EXPECT_EQ(m_positions.lineX, 225 - (1 << 28));
    m_marquee.MoveTo(std::numeric_limits<std::int64_t>::min() / 4);
    EXPECT_EQ(m_positions.lineX, 225 + (1 << 28));
    EXPECT_FALSE(Frame().next);
    m_marquee.MoveTo(0);
    EXPECT_EQ(m_positions.lineX, 225);
}

TEST_F(Marquee, AStripElsewhereMovesEveryPlaceWithIt)
{
    const RECT strip = { 20, 10, 220, 60 }; // a step is 40
    m_marquee.StartLine(0, { 0, 1000, 100 }, strip);
    EXPECT_EQ(m_positions.startX, 200);
    EXPECT_EQ(m_marquee.Speed(), 280 / 1000.0);
    m_marquee.MoveTo(1000);
    EXPECT_EQ(m_positions.lineX, -80); // gone at the left edge
    const MarqueeFrame frame = Frame();
    EXPECT_EQ(frame.current.top, 10);
    EXPECT_EQ(frame.current.bottom, 60);
    ASSERT_TRUE(frame.next);
    EXPECT_EQ(frame.next->left, 60);
    EXPECT_EQ(frame.next->right, 220);
    m_marquee.StartLine(1, { 1000, 2000, 100 }, strip);
    EXPECT_EQ(m_positions.startX, 60);
    EXPECT_EQ(m_marquee.Speed(), (100 + 60 - 20 - 60) / 1000.0);
}

TEST_F(Marquee, AStripWithoutWidthHasNoRoomForAnything)
{
    m_marquee.StartLine(0, { 0, 1000, 100 }, {});
    EXPECT_EQ(m_positions.startX, 0);
    EXPECT_TRUE(m_marquee.MoveTo(500));
    EXPECT_FALSE(Frame().previous);
}

// Whole songs at the timer's beat: every line moves as far as its speed allows, and takes over where it stood.
TEST(MarqueeOfWholeSongs, NoLineJumps)
{
    std::mt19937 random(20'260'102);
    const auto between = [&random](int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random);
    };
    for (int song = 0; song < 60; ++song) {
        LyricsPositions positions;
        LyricsMarquee marquee(positions);
        std::vector<MarqueeLine> lines;
        std::int64_t timeMs = 0;
        for (int i = between(2, 12); i > 0; --i) {
            const std::int64_t beganMs = timeMs;
            timeMs += between(1, 9) == 1 ? between(1, 300) : between(300, 20'000);
            lines.push_back({ beganMs, timeMs, between(1, 900) });
        }
        lines.back().endMs.reset();
        std::size_t current = lines.size();
        for (std::int64_t nowMs = between(0, 99); nowMs < timeMs + 20'000; nowMs += 100) {
            std::size_t due = 0;
            while (due + 1 < lines.size() && lines[due + 1].startMs <= nowMs)
                ++due;
            const MarqueeLine& line = lines[due];
            const bool isNew = due != current;
            const LONG before = positions.lineX;
            const LONG stoodAt = positions.nextLineLeft;
            if (isNew) {
                marquee.StartLine(static_cast<std::int32_t>(due), line, kStrip);
                ASSERT_EQ(positions.startX, stoodAt > 0 ? stoodAt : 225) << "song " << song << " line " << due;
            }
            const LONG from = isNew ? positions.startX : before;
            if (marquee.MoveTo(nowMs) || isNew) {
                marquee.TakeFrame(due > 0 ? HasNeighbour::Yes : HasNeighbour::No,
                                  line.endMs ? HasNeighbour::Yes : HasNeighbour::No);
                const double most = std::abs(*marquee.Speed()) * 100 + kLeastMovementPx;
                ASSERT_LE(std::abs(positions.lineX - from), most) << "song " << song << " at " << nowMs;
            }
            current = due;
        }
        EXPECT_LE(positions.lineX + lines.back().widthPx, std::max<LONG>(201, positions.startX + lines.back().widthPx));
    }
}

} // namespace
