#include "app/step_button_rules.h"

namespace {

bool IsFirst(PlaceInList place)
{
    return place.number == 1;
}
bool IsLast(PlaceInList place)
{
    return place.number == place.count;
}

} // namespace

StepButtonChange WhenMarkedSongPlays(PlaceInList place, const PlayModes& modes)
{
    if (modes.IsRepeatAllOn() || modes.IsShuffleOn())
        return {};
    if (IsLast(place))
        return { .next = ButtonChange::Disable };
    if (IsFirst(place)) // not where it is the last, too
        return { .previous = ButtonChange::Disable };
    return {};
}

// Shuffle is not asked.
StepButtonChange WhenNoSongIsMarked(const PlayModes& modes)
{
    return { .previous = modes.IsRepeatAllOn() ? ButtonChange::Keep : ButtonChange::Disable };
}

StepButtonChange WhenShuffleGoesOn()
{
    return { ButtonChange::Enable, ButtonChange::Enable };
}

// Repeat is asked for the first song only.
StepButtonChange WhenShuffleGoesOff(PlaceInList place, const PlayModes& modes)
{
    StepButtonChange change;
    if (IsFirst(place))
        change.previous = modes.IsRepeatAllOn() ? ButtonChange::Enable : ButtonChange::Disable;
    if (IsLast(place))
        change.next = ButtonChange::Disable;
    return change;
}

StepButtonChange WhenRepeatGoesToAll()
{
    return { ButtonChange::Enable, ButtonChange::Enable };
}

// Shuffle is not asked.
StepButtonChange WhenRepeatGoesToSingleOrOff(PlaceInList place)
{
    return { .previous = IsFirst(place) ? ButtonChange::Disable : ButtonChange::Keep,
             .next = IsLast(place) ? ButtonChange::Disable : ButtonChange::Keep };
}
