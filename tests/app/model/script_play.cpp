#include "tests/app/model/player_model.h"
#include "tests/app/model/player_under_test.h"
#include "tests/app/model/script.h"

#include <algorithm>
#include <exception>

namespace cardsong::test {

namespace {

constexpr int kLongestWaitMs = 100; // between two looks

struct Opening {
    std::vector<CardSong> songs;
    std::optional<int> priority;
    std::uint64_t seed = 0;
    std::size_t steps = 0; // of the script
};

// "aaaa.mp3", "bbbbbb.mp3": names so different that no song takes the lyrics of another; longer and longer titles.
std::string NameOf(std::size_t number)
{
    return std::string(4 + 2 * number, static_cast<char>('a' + number % 26)) + ".mp3";
}

// A plain song of whole seconds was played before.
CardSong SongFrom(const Step& step, std::size_t number)
{
    const auto kind = static_cast<SongKind>(step.a);
    const double savedSeconds = kind == SongKind::Plain && step.b % 10 == 0 ? step.b / 10 : 0;
    return { NameOf(number), kind, step.b / 10.0, savedSeconds };
}

Opening OpeningOf(const Script& script)
{
    Opening opening;
    for (const Step& step : script) {
        if (!StandsBeforeTheStart(step.kind))
            break;
        ++opening.steps;
        if (step.kind == StepKind::Draws)
            opening.seed = static_cast<std::uint64_t>(step.a);
        if (step.kind == StepKind::Priority)
            opening.priority = step.a;
        if (step.kind == StepKind::Song)
            opening.songs.push_back(SongFrom(step, opening.songs.size()));
    }
    return opening;
}

class Duel {
public:
    explicit Duel(const Opening& opening)
        : m_player(opening.songs, opening.priority, opening.seed),
          m_model({ opening.songs, opening.seed, opening.priority, m_player.NowMs(), TitleWidthPx })
    {
    }

    // Empty when the two agree.
    std::string Compare()
    {
        const PlayerView seen = m_player.View();
        return Differences(m_model.View(), seen) + BrokenLaws(seen);
    }

    std::string Take(const Step& step)
    {
        if (step.kind == StepKind::Wait)
            return Wait(step.a);
        m_player.Take(step);
        m_model.Take(step);
        return Compare();
    }

    // A key or a tap needs the main window in front; the other roads end whatever is open.
    std::string Exit(int road)
    {
        std::string what;
        if (road == 1 || road == 2)
            for (const Step& step :
                 { Step{ StepKind::Focus, 1 }, { StepKind::Command, 35 }, { StepKind::Command, 16 } })
                what += Take(step);
        m_player.Exit(road);
        what += m_player.LeftOver();
        if (m_player.SavedList() != m_model.SavedList())
            what += "  saved play list: should be\n" + m_model.SavedList() + "  is\n" + m_player.SavedList();
        return what;
    }

private:
    std::string Wait(int milliseconds)
    {
        std::string what;
        for (int left = milliseconds; left > 0 && what.empty(); left -= kLongestWaitMs) {
            m_player.Wait(std::min(left, kLongestWaitMs));
            m_model.Wait(std::min(left, kLongestWaitMs));
            what = Compare();
        }
        return what;
    }

    PlayerUnderTest m_player;
    PlayerModel m_model;
};

} // namespace

std::optional<Disagreement> PlayScript(const Script& script)
{
    const Opening opening = OpeningOf(script);
    Duel duel(opening);
    std::string what = duel.Compare();
    int road = 0;
    for (std::size_t i = opening.steps; what.empty() && i < script.size(); ++i) {
        if (script[i].kind == StepKind::Exit) {
            road = script[i].a;
            break;
        }
        if (!(what = duel.Take(script[i])).empty())
            return Disagreement{ i, what };
    }
    if (what.empty())
        what = duel.Exit(road);
    return what.empty() ? std::nullopt : std::optional(Disagreement{ script.size(), what });
}

} // namespace cardsong::test
