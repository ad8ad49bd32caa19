#include "tests/app/model/script.h"

#include <array>
#include <random>

namespace cardsong::test {

namespace {

using Numbers = std::mt19937_64;

int Below(Numbers& numbers, int count)
{
    return static_cast<int>(numbers() % static_cast<std::uint64_t>(count));
}

template <std::size_t Count>
int OneOf(Numbers& numbers, const std::array<int, Count>& choices)
{
    return choices[static_cast<std::size_t>(Below(numbers, static_cast<int>(Count)))];
}

constexpr std::array kCommands{ 256, 257, 258, 259, 260, 261, 262, 263, 264, 265, 266, 267, 22, 999 };
constexpr std::array kListCommands{ 16, 16, 24, 24, 25, 25, 28, 29, 30, 31, 33, 33, 35, 35 };
constexpr std::array kKeys{ 37, 39, 13, 38, 40, 65 }; // left, right, Enter, up, down, A
constexpr std::array kWaits{ 10, 30, 50, 70, 100, 100, 200, 300, 1000, 2500 };
constexpr std::array kHighWords{ 0, 0, 0, 1, 2 };
constexpr std::array kActivations{ 1, 2 };

// How often a step of each kind comes, of `kAllWeights`.
struct Weight {
    StepKind kind;
    int weight;
};
constexpr std::array kWeights{
    Weight{ StepKind::Command, 20 },   Weight{ StepKind::Sent, 8 },     Weight{ StepKind::Key, 16 },
    Weight{ StepKind::HeldKey, 2 },    Weight{ StepKind::Tap, 14 },     Weight{ StepKind::Slide, 3 },
    Weight{ StepKind::Row, 4 },        Weight{ StepKind::Check, 3 },    Weight{ StepKind::CloseLists, 2 },
    Weight{ StepKind::Wait, 22 },      Weight{ StepKind::Finish, 3 },   Weight{ StepKind::EndWaits, 6 },
    Weight{ StepKind::Break, 1 },      Weight{ StepKind::Abort, 1 },    Weight{ StepKind::Delete, 2 },
    Weight{ StepKind::Restore, 3 },    Weight{ StepKind::Become, 2 },   Weight{ StepKind::FailInit, 1 },
    Weight{ StepKind::Focus, 5 },      Weight{ StepKind::Activate, 1 }, Weight{ StepKind::Priority, 3 },
    Weight{ StepKind::AudioState, 5 },
};

StepKind DrawKind(Numbers& numbers)
{
    int all = 0;
    for (const Weight& row : kWeights)
        all += row.weight;
    int place = Below(numbers, all);
    for (const Weight& row : kWeights)
        if ((place -= row.weight) < 0)
            return row.kind;
    return StepKind::Wait;
}

Step DrawStep(Numbers& numbers)
{
    const StepKind kind = DrawKind(numbers);
    switch (kind) {
    case StepKind::Command:
    case StepKind::Sent: {
        const int command = Below(numbers, 2) == 0 ? OneOf(numbers, kListCommands) : OneOf(numbers, kCommands);
        return { kind, command, command == 260 ? OneOf(numbers, kHighWords) : 0 };
    }
    case StepKind::Key:
    case StepKind::HeldKey: return { kind, OneOf(numbers, kKeys) };
    case StepKind::Tap: return { kind, Below(numbers, kTapPlaces) };
    case StepKind::Slide: return { kind, Below(numbers, 401) };
    case StepKind::Wait: return { kind, OneOf(numbers, kWaits) };
    case StepKind::Row:
    case StepKind::Check:
    case StepKind::Delete:
    case StepKind::Restore: return { kind, Below(numbers, 12) };
    case StepKind::Become: return { kind, Below(numbers, 12), Below(numbers, kSongKinds) };
    case StepKind::Focus: return { kind, Below(numbers, 2) };
    case StepKind::Activate: return { kind, OneOf(numbers, kActivations) };
    case StepKind::Priority: return { kind, Below(numbers, 8) };
    case StepKind::AudioState: return { kind, Below(numbers, 4) };
    default: return { kind };
    }
}

// Most songs can be played.
int DrawSongKind(Numbers& numbers)
{
    return Below(numbers, 2) == 0 ? 0 : Below(numbers, kSongKinds);
}

} // namespace

Script DrawScript(std::uint64_t seed, int steps)
{
    Numbers numbers(seed);
    Script script{ { StepKind::Draws, static_cast<int>(numbers() % 1'000'000'000) } };
    if (Below(numbers, 3) != 0)
        script.push_back({ StepKind::Priority, Below(numbers, 8) });
    for (int songs = Below(numbers, 11); songs > 0; --songs)
        script.push_back({ StepKind::Song, DrawSongKind(numbers), 1 + Below(numbers, 80) });
    for (int i = 0; i < steps; ++i)
        script.push_back(DrawStep(numbers));
    script.push_back({ StepKind::Exit, Below(numbers, kExitRoads) });
    return script;
}

} // namespace cardsong::test
