#include "app/step_button_rules.h"

#include <gtest/gtest.h>

namespace {

constexpr auto kKeep = ButtonChange::Keep;
constexpr auto kEnable = ButtonChange::Enable;
constexpr auto kDisable = ButtonChange::Disable;

constexpr PlaceInList kFirst{ 1, 3 };
constexpr PlaceInList kMiddle{ 2, 3 };
constexpr PlaceInList kLast{ 3, 3 };
constexpr PlaceInList kOnly{ 1, 1 };

PlayModes Modes(bool shuffle, Repeat repeat)
{
    PlayModes modes;
    modes.shuffle = shuffle ? 1 : 0;
    modes.SetRepeat(repeat);
    return modes;
}

} // namespace

TEST(StepButtonRules, AMarkedSongAtAnEndOfTheListTurnsOffTheStepThatLeadsNowhere)
{
    for (const Repeat repeat : { Repeat::Off, Repeat::Single }) {
        const PlayModes plain = Modes(false, repeat);
        EXPECT_EQ(WhenMarkedSongPlays(kFirst, plain), (StepButtonChange{ kDisable, kKeep }));
        EXPECT_EQ(WhenMarkedSongPlays(kMiddle, plain), (StepButtonChange{ kKeep, kKeep }));
        EXPECT_EQ(WhenMarkedSongPlays(kLast, plain), (StepButtonChange{ kKeep, kDisable }));
    }
}

TEST(StepButtonRules, OfTheOnlySongOnlyNextIsTurnedOff)
{
    EXPECT_EQ(WhenMarkedSongPlays(kOnly, Modes(false, Repeat::Off)), (StepButtonChange{ kKeep, kDisable }));
}

TEST(StepButtonRules, WhereEveryStepLeadsSomewhereAMarkedSongTurnsNothingOff)
{
    for (const PlaceInList place : { kFirst, kMiddle, kLast, kOnly })
        for (const PlayModes& modes : { Modes(true, Repeat::Off), Modes(true, Repeat::Single), Modes(true, Repeat::All),
                                        Modes(false, Repeat::All) })
            EXPECT_EQ(WhenMarkedSongPlays(place, modes), StepButtonChange{}) << place.number;
}

TEST(StepButtonRules, WithoutAMarkTheFirstSongTurnsPreviousOffUnlessAllRepeats)
{
    EXPECT_EQ(WhenNoSongIsMarked(Modes(false, Repeat::Off)), (StepButtonChange{ kDisable, kKeep }));
    EXPECT_EQ(WhenNoSongIsMarked(Modes(false, Repeat::Single)), (StepButtonChange{ kDisable, kKeep }));
    EXPECT_EQ(WhenNoSongIsMarked(Modes(false, Repeat::All)), (StepButtonChange{ kKeep, kKeep }));
}

TEST(StepButtonRules, WithoutAMarkShuffleIsNotAsked)
{
    EXPECT_EQ(WhenNoSongIsMarked(Modes(true, Repeat::Off)), (StepButtonChange{ kDisable, kKeep }));
}

TEST(StepButtonRules, ShuffleAndRepeatAllTurnBothStepsOn)
{
    EXPECT_EQ(WhenShuffleGoesOn(), (StepButtonChange{ kEnable, kEnable }));
    EXPECT_EQ(WhenRepeatGoesToAll(), (StepButtonChange{ kEnable, kEnable }));
}

TEST(StepButtonRules, WithoutShuffleTheFirstSongHasPreviousOnlyWhenAllRepeats)
{
    EXPECT_EQ(WhenShuffleGoesOff(kFirst, Modes(false, Repeat::Off)), (StepButtonChange{ kDisable, kKeep }));
    EXPECT_EQ(WhenShuffleGoesOff(kFirst, Modes(false, Repeat::All)), (StepButtonChange{ kEnable, kKeep }));
    EXPECT_EQ(WhenShuffleGoesOff(kMiddle, Modes(false, Repeat::Off)), (StepButtonChange{ kKeep, kKeep }));
}

TEST(StepButtonRules, WithoutShuffleTheLastSongHasNoNextEvenWhenAllRepeats)
{
    EXPECT_EQ(WhenShuffleGoesOff(kLast, Modes(false, Repeat::Off)), (StepButtonChange{ kKeep, kDisable }));
    EXPECT_EQ(WhenShuffleGoesOff(kLast, Modes(false, Repeat::All)), (StepButtonChange{ kKeep, kDisable }));
    EXPECT_EQ(WhenShuffleGoesOff(kOnly, Modes(false, Repeat::All)), (StepButtonChange{ kEnable, kDisable }));
}

TEST(StepButtonRules, RepeatThatLeavesAllTurnsOffWhatLeadsNowhere)
{
    EXPECT_EQ(WhenRepeatGoesToSingleOrOff(kFirst), (StepButtonChange{ kDisable, kKeep }));
    EXPECT_EQ(WhenRepeatGoesToSingleOrOff(kMiddle), (StepButtonChange{ kKeep, kKeep }));
    EXPECT_EQ(WhenRepeatGoesToSingleOrOff(kLast), (StepButtonChange{ kKeep, kDisable }));
    EXPECT_EQ(WhenRepeatGoesToSingleOrOff(kOnly), (StepButtonChange{ kDisable, kDisable }));
}
