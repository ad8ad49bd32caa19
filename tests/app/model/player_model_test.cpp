// The player and the model of its rules, side by side through scripts drawn by chance. CONTRIBUTING.md tells how to
// play more of them, and how to play one again.
#include "tests/app/model/script.h"
#include "tests/long_form.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

using namespace cardsong::test;

namespace {

constexpr int kSteps = 200;
constexpr int kScripts = 10;
constexpr int kScriptsOfTheLongForm = 1000;

int ScriptsToPlay()
{
    if (!Setting("CARDSONG_SCRIPTS").empty())
        return std::stoi(Setting("CARDSONG_SCRIPTS"));
    return IsLongForm() ? kScriptsOfTheLongForm : kScripts;
}

void ExpectAgreement(const Script& script)
{
    if (!PlayScript(script))
        return;
    const Script shortest = Shrink(script, PlayScript);
    const auto disagreement = PlayScript(shortest);
    ADD_FAILURE() << "The player and the model differ. Play it again: CARDSONG_SCRIPT='" << WriteScript(shortest)
                  << "'\n"
                  << (disagreement ? disagreement->what : "  but not always\n");
}

} // namespace

TEST(PlayerModel, AgreesWithThePlayerThroughScriptsDrawnByChance)
{
    if (!Setting("CARDSONG_SCRIPT").empty()) {
        ExpectAgreement(ReadScript(Setting("CARDSONG_SCRIPT")));
        return;
    }
    const std::uint64_t first = FirstSeed();
    const int scripts = ScriptsToPlay();
    std::cout << scripts << " scripts of " << kSteps << " steps, CARDSONG_SEED=" << first << std::endl;
    for (int i = 0; i < scripts && !HasFailure(); ++i) {
        SCOPED_TRACE("CARDSONG_SEED=" + std::to_string(first + static_cast<std::uint64_t>(i)));
        ExpectAgreement(DrawScript(first + static_cast<std::uint64_t>(i), kSteps));
    }
}

TEST(Scripts, AreReadAsTheyWereWritten)
{
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        const Script script = DrawScript(seed, kSteps);
        EXPECT_EQ(ReadScript(WriteScript(script)), script) << seed;
    }
    EXPECT_EQ(WriteScript(ReadScript(" Song 1 30 ;Key 13;;Finish\n")), "Song 1 30; Key 13; Finish");
    EXPECT_THROW(ReadScript("Dance"), std::invalid_argument);
    EXPECT_THROW(ReadScript("Key"), std::invalid_argument);
}

TEST(Scripts, OfOneSeedAreTheSameAndOfAnotherOthers)
{
    EXPECT_EQ(DrawScript(5, kSteps), DrawScript(5, kSteps));
    EXPECT_NE(DrawScript(5, kSteps), DrawScript(6, kSteps));
}

TEST(Scripts, AreShrunkToTheStepsThatMatter)
{
    const auto failsAtFinishAfterKey = [](const Script& script) -> std::optional<Disagreement> {
        bool isStruck = false;
        for (std::size_t i = 0; i < script.size(); ++i) {
            isStruck = isStruck || script[i] == Step{ StepKind::Key, 13 };
            if (isStruck && script[i].kind == StepKind::Finish)
                return Disagreement{ i, "so" };
        }
        return std::nullopt;
    };
    Script script = DrawScript(7, kSteps);
    script.insert(script.begin() + 60, { StepKind::Key, 13 });
    script.insert(script.begin() + 120, { StepKind::Finish });
    EXPECT_EQ(WriteScript(Shrink(script, failsAtFinishAfterKey)), "Key 13; Finish");
}
