// Places of a song, on every engine, the simulated one too: so what a test of the player sees is what a real engine
// does.
#include "tests/playback/engine_test.h"

#include <limits>

using namespace cardsong::test;

namespace {

class PlacesOf : public SoundTest, public testing::WithParamInterface<const char*> {};

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

TEST_P(PlacesOf, ASongThatIsCuedBeforeItsBeginningAreItsBeginning)
{
    ASSERT_TRUE(Open(GetParam()));
    for (const double place : { -0.001, -3.0, -1e18 }) {
        ASSERT_TRUE(m_graph.SetPosition(0.5));
        EXPECT_TRUE(m_graph.SetPosition(place)) << place;
        EXPECT_EQ(Position(), 0.0) << place;
    }
}

TEST_P(PlacesOf, ASongThatPlaysBeforeItsBeginningAreItsBeginning)
{
    ASSERT_TRUE(Open(GetParam()));
    ASSERT_TRUE(m_graph.SetPosition(0.5));
    ASSERT_TRUE(m_graph.Run());
    ASSERT_TRUE(Await([&] { return Position() > 0.5; }));
    EXPECT_TRUE(m_graph.SetPosition(Position() - 5.0));
    const double place = Position();
    EXPECT_GE(place, 0.0);
    EXPECT_LT(place, 0.4); // and it plays on from there
    EXPECT_TRUE(Await([&] { return Position() > place; }));
    EXPECT_EQ(TakeEvent(), 0);
}

TEST_P(PlacesOf, APartThatBeginsBeforeItsBeginningBeginsThere)
{
    ASSERT_TRUE(Open(GetParam()));
    ASSERT_TRUE(m_graph.SetPosition(0.5));
    EXPECT_TRUE(m_graph.SetPositions(-2.0, 0.5));
    EXPECT_EQ(Position(), 0.0);
    double stop = 0.0;
    EXPECT_TRUE(m_graph.GetStopPosition(stop));
    EXPECT_EQ(stop, 0.5);
}

TEST_P(PlacesOf, ASongThatAreNoNumbersAreRefused)
{
    ASSERT_TRUE(Open(GetParam()));
    double stop = 0.0;
    ASSERT_TRUE(m_graph.GetStopPosition(stop));
    for (const double place : { kNoNumber, kInfinite, -kInfinite }) {
        EXPECT_FALSE(m_graph.SetPosition(place)) << place;
        EXPECT_FALSE(m_graph.SetPositions(place, 0.5)) << place;
        EXPECT_FALSE(m_graph.SetPositions(0.25, place)) << place;
        EXPECT_EQ(Position(), 0.0) << place;
    }
    double stopAfter = 0.0;
    EXPECT_TRUE(m_graph.GetStopPosition(stopAfter));
    EXPECT_EQ(stopAfter, stop);
}

INSTANTIATE_TEST_SUITE_P(Engine, PlacesOf, testing::ValuesIn(kSongs), SongTestName);

} // namespace
