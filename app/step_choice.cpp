#include "app/step_choice.h"

#include "platform/ce.h"

#include <algorithm>
#include <vector>

namespace {

// A song of the list by chance; `count` is above 0.
int DrawNumber(std::int32_t count)
{
    return static_cast<int>(Random() % static_cast<DWORD>(count)) + 1;
}

// One that was not played since shuffle went on; when all were, any.
int DrawUnplayed(const ConstSongList& list)
{
    std::vector<bool> played;
    for (const MediaFileEntry& entry : list)
        played.push_back(entry.playedInShuffle != 0);
    const bool allPlayed = std::ranges::find(played, false) == played.end();
    int number = DrawNumber(list.Count());
    while (!allPlayed && played[static_cast<std::size_t>(number - 1)])
        number = DrawNumber(list.Count());
    return number;
}

// The number that shuffle kept, which is then forgotten; 0 when it kept none, or the list has become shorter.
int TakeRemembered(const ConstSongList& list, std::int32_t& remembered)
{
    const int number = remembered;
    remembered = 0;
    return number <= list.Count() ? number : 0;
}

} // namespace

int ChooseNext(const ConstSongList& list, int current, PlayModes& modes)
{
    if (modes.IsShuffleOn()) {
        modes.shufflePrevious = current;
        const int remembered = TakeRemembered(list, modes.shuffleNext);
        return remembered != 0 ? remembered : DrawUnplayed(list);
    }
    if (current < list.Count())
        return current + 1;
    return modes.IsRepeatAllOn() ? 1 : 0;
}

int ChoosePrevious(const ConstSongList& list, int current, PlayModes& modes)
{
    if (modes.IsShuffleOn()) {
        modes.shuffleNext = current;
        const int remembered = TakeRemembered(list, modes.shufflePrevious);
        return remembered != 0 ? remembered : DrawNumber(list.Count());
    }
    if (current > 1)
        return current - 1;
    return modes.IsRepeatAllOn() ? list.Count() : 0;
}
