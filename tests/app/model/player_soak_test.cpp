// A card of mixed songs is played again and again, on a clock that the test advances. What the player holds of the
// machine must be the same after thousands of songs as after a hundred.
#include "tests/app/model/player_under_test.h"
#include "tests/long_form.h"
#include "tests/process_use.h"

#include <gtest/gtest.h>

#include <iostream>
#include <random>

using namespace cardsong::test;

namespace {

constexpr int kFirstSongs = 100; // by which every cache is filled
constexpr int kSongs = 300;
constexpr int kSongsOfTheLongForm = 10'000;
constexpr int kSongsOfTheCard = 60;
constexpr double kHeapMayGrow = 0.01;
constexpr double kResidentMayGrow = 0.03;

std::vector<CardSong> MixedCard()
{
    std::vector<CardSong> songs;
    for (int i = 0; i < kSongsOfTheCard; ++i) {
        const std::string name = "song " + std::to_string(i) + ".mp3";
        songs.push_back({ name, static_cast<SongKind>(i % kSongKinds), 1 + i % 7 * 0.5, 0, true });
    }
    return songs;
}

class Listener {
public:
    explicit Listener(std::uint64_t seed) : m_numbers(seed), m_player(MixedCard(), 1, seed) {}

    // Until that many songs were opened since the start.
    void PlayUpTo(int songs)
    {
        for (; m_opened < songs; m_opened += m_player.CountOpenedSongs()) {
            DoSomething();
            if (!m_player.IsPlaying())
                m_player.Take({ StepKind::Key, 13 });
            m_player.Wait(500);
            m_player.PutBackSongsThatLeft();
        }
    }
    [[nodiscard]] int Opened() const { return m_opened; }

private:
    // Mostly nothing: songs are played to their ends.
    void DoSomething()
    {
        const auto choice = m_numbers() % 40;
        const auto place = static_cast<int>(m_numbers() % kSongsOfTheCard);
        switch (choice) {
        case 0: m_player.Take({ StepKind::Command, 263 }); break;
        case 1:
        case 2: m_player.Take({ StepKind::Command, 265 }); break;
        case 3: m_player.Take({ StepKind::Key, 39 }); break;
        case 4: m_player.Take({ StepKind::Key, 37 }); break;
        case 5: m_player.Take({ StepKind::Tap, static_cast<int>(TapPlace::Stop) }); break;
        case 6: m_player.Take({ StepKind::Slide, place * 6 }); break;
        case 7: m_player.Take({ StepKind::Row, place }); break;
        case 8: m_player.Take({ StepKind::Delete, place }); break;
        case 9: m_player.Take({ StepKind::Key, 13 }); break;
        case 10:
            m_player.Take({ StepKind::AudioState, 2 });
            m_player.Take({ StepKind::AudioState, 1 });
            break;
        case 11: m_player.Take({ StepKind::Break }); break;
        default: break;
        }
    }

    std::mt19937_64 m_numbers;
    PlayerUnderTest m_player;
    int m_opened = 0;
};

} // namespace

TEST(Soak, ThousandsOfSongsLeaveNothingBehind)
{
    const std::uint64_t seed = FirstSeed();
    std::cout << "CARDSONG_SEED=" << seed << std::endl;
    Listener listener(seed);
    listener.PlayUpTo(kFirstSongs);
    const ProcessUse first = MeasureProcess();
    std::cout << listener.Opened() << " songs: " << first << std::endl;
    listener.PlayUpTo(IsLongForm() ? kSongsOfTheLongForm : kSongs);
    const ProcessUse last = MeasureProcess();
    std::cout << listener.Opened() << " songs: " << last << std::endl;
    EXPECT_EQ(last.descriptors, first.descriptors);
    EXPECT_EQ(last.threads, first.threads);
    if (!kIsMemoryMeasured)
        return;
    EXPECT_LE(static_cast<double>(last.heapBytes), static_cast<double>(first.heapBytes) * (1 + kHeapMayGrow));
    EXPECT_LE(static_cast<double>(last.residentBytes),
              static_cast<double>(first.residentBytes) * (1 + kResidentMayGrow));
}
