#include "lyrics/lyrics_line_choice.h"

#include "lyrics/lyrics_context.h"
#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <set>

namespace {

using cardsong::test::OwnedLyrics;

class LineChoice : public ::testing::Test {
protected:
    // Lines of these times, whatever their texts.
    void Make(const std::vector<std::int32_t>& timesMs)
    {
        for (const std::int32_t timeMs : timesMs)
            LyricList(m_lyrics.items).Add(timeMs, std::make_shared<const WString>(TEXT("x")));
    }
    // -1 where there is none.
    std::int32_t Sung(std::int64_t positionMs, std::int32_t lastShown = kNoLine) const
    {
        const auto chosen = ChooseLine(Lines(), LineOrder::Once, lastShown, positionMs);
        EXPECT_TRUE(!chosen || chosen->positionMs == positionMs);
        return chosen ? chosen->index : kNoLine;
    }
    std::optional<ChosenLine> InRound(std::int64_t positionMs) const
    {
        return ChooseLine(Lines(), LineOrder::Round, kNoLine, positionMs);
    }
    ConstLyricList Lines() const { return ConstLyricList(m_lyrics.items); }

private:
    OwnedLyrics m_lyrics;
};

TEST_F(LineChoice, PlaceholderLinesTakeTurnsEveryFifteenSeconds)
{
    Make({ 0, 15'000, 30'000 });
    EXPECT_EQ(InRound(0), (ChosenLine{ 0, 0 }));
    EXPECT_EQ(InRound(14'999), (ChosenLine{ 0, 14'999 }));
    EXPECT_EQ(InRound(15'000), (ChosenLine{ 1, 15'000 }));
    EXPECT_EQ(InRound(30'000), (ChosenLine{ 2, 30'000 }));
    EXPECT_EQ(InRound(44'999), (ChosenLine{ 2, 44'999 }));
    EXPECT_EQ(InRound(45'000), (ChosenLine{ 0, 0 }));
    EXPECT_EQ(InRound(std::numeric_limits<std::int32_t>::max()), (ChosenLine{ 2, 2'147'483'647 % 45'000 }));
}

TEST_F(LineChoice, BeforeTheSongThereIsNoPlaceholderLine)
{
    Make({ 0, 15'000, 30'000 });
    EXPECT_EQ(InRound(-1), std::nullopt);
    EXPECT_EQ(InRound(std::numeric_limits<std::int32_t>::min()), std::nullopt);
}

TEST_F(LineChoice, TheLastLineNeedsATimeStrictlyLater)
{
    Make({ 0, 5000, 9000 });
    EXPECT_EQ(Sung(0), 0);
    EXPECT_EQ(Sung(4999), 0);
    EXPECT_EQ(Sung(5000), 1);
    EXPECT_EQ(Sung(8999), 1);
    EXPECT_EQ(Sung(9000), kNoLine);
    EXPECT_EQ(Sung(9001), 2);
    EXPECT_EQ(Sung(std::numeric_limits<std::int32_t>::max()), 2);
}

TEST_F(LineChoice, BeforeTheFirstLineThereIsNone)
{
    Make({ 1000, 5000 });
    EXPECT_EQ(Sung(999), kNoLine);
    EXPECT_EQ(Sung(-1), kNoLine);
    EXPECT_EQ(Sung(std::numeric_limits<std::int32_t>::min()), kNoLine);
}

TEST_F(LineChoice, AnEmptyListHasNoLine)
{
    EXPECT_EQ(Sung(0), kNoLine);
    EXPECT_EQ(InRound(0), std::nullopt);
}

TEST_F(LineChoice, TheOnlyLineIsTheLast)
{
    Make({ 0 });
    EXPECT_EQ(Sung(0), kNoLine);
    EXPECT_EQ(Sung(1), 0);
}

TEST_F(LineChoice, AnIndexOutOfTheListBeginsTheSearchAtItsStart)
{
    Make({ 0, 5000, 9000 });
    EXPECT_EQ(Sung(6000, 3), 1);
    EXPECT_EQ(Sung(6000, -7), 1);
}

TEST_F(LineChoice, WhereverTheSearchBeginsTheLineIsTheOneOfAPlainModel)
{
    std::mt19937 random(20'260'101);
    const auto upTo = [&random](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    for (int round = 0; round < 300; ++round) {
        OwnedLyrics lyrics;
        const LyricList list(lyrics.items);
        std::set<std::int32_t> timesMs;
        const int span = upTo(1) == 0 ? 30 : 6'040'000;
        for (int i = upTo(12); i >= 0; --i)
            timesMs.insert(upTo(span) - span / 8);
        for (const std::int32_t timeMs : timesMs)
            list.Append(timeMs, std::make_shared<const WString>(TEXT("x")));
        for (int i = 0; i < 100; ++i) {
            const int positionMs = upTo(span + span / 2) - span / 4;
            // The last stamp that is not later; of the last line one that is earlier.
            const auto after = timesMs.upper_bound(positionMs);
            int expected = static_cast<int>(std::distance(timesMs.begin(), after)) - 1;
            if (positionMs == *timesMs.rbegin())
                expected = kNoLine;
            const int from = upTo(static_cast<int>(timesMs.size())) - 1;
            const auto chosen = ChooseLine(ConstLyricList(lyrics.items), LineOrder::Once, from, positionMs);
            ASSERT_EQ(chosen ? chosen->index : kNoLine, expected) << "round " << round << " at " << positionMs;
        }
    }
}

TEST(LineNeighbours, LyricsEndAtBothEnds)
{
    EXPECT_EQ(LineBefore(0, 3, LineOrder::Once), kNoLine);
    EXPECT_EQ(LineBefore(2, 3, LineOrder::Once), 1);
    EXPECT_EQ(LineAfter(0, 3, LineOrder::Once), 1);
    EXPECT_EQ(LineAfter(2, 3, LineOrder::Once), kNoLine);
    EXPECT_EQ(SecondLineBefore(2, 3, LineOrder::Once), 0);
    EXPECT_EQ(SecondLineBefore(1, 3, LineOrder::Once), kNoLine);
    EXPECT_EQ(SecondLineBefore(0, 3, LineOrder::Once), kNoLine);
}

TEST(LineNeighbours, PlaceholderLinesFollowEachOtherInARound)
{
    EXPECT_EQ(LineBefore(0, 3, LineOrder::Round), 2);
    EXPECT_EQ(LineBefore(1, 3, LineOrder::Round), 0);
    EXPECT_EQ(LineAfter(1, 3, LineOrder::Round), 2);
    EXPECT_EQ(LineAfter(2, 3, LineOrder::Round), 0);
    EXPECT_EQ(SecondLineBefore(0, 3, LineOrder::Round), 1);
    EXPECT_EQ(SecondLineBefore(1, 3, LineOrder::Round), 2);
    EXPECT_EQ(SecondLineBefore(2, 3, LineOrder::Round), 0);
    EXPECT_EQ(SecondLineBefore(0, 1, LineOrder::Round), 0);
}

} // namespace
