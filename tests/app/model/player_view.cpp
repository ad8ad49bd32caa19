#include "tests/app/model/player_view.h"

#include <algorithm>
#include <cstddef>
#include <sstream>

namespace cardsong::test {

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

template <typename Value>
std::string Text(const Value& value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

std::string TextOf(const std::vector<EntryView>& list)
{
    std::ostringstream text;
    for (const EntryView& entry : list)
        text << entry.name << " mark " << entry.mark << (entry.isPlayed ? " played " : " ") << entry.duration << "s, ";
    return text.str();
}

std::string TextOf(const std::vector<LibraryView>& library)
{
    std::string text;
    for (const LibraryView& entry : library)
        text += entry.name + (entry.isChecked ? " checked, " : ", ");
    return text;
}

std::string TextOf(const StripView& strip)
{
    return (strip.isActive ? "active " : "inactive ") + std::to_string(strip.left) + ".." + std::to_string(strip.right);
}

void AddState(Rows& rows, const PlayerView& view)
{
    rows.emplace_back("song loaded", Text(view.loaded));
    rows.emplace_back("playing", Text(view.playing));
    rows.emplace_back("stepping", Text(view.stepping));
    rows.emplace_back("current number", Text(view.current));
    rows.emplace_back("interrupted", Text(view.interrupted));
    rows.emplace_back("saved position", Text(view.savedPosition));
    rows.emplace_back("shuffle", Text(view.shuffle));
    rows.emplace_back("repeat all", Text(view.repeatAll));
    rows.emplace_back("repeat single", Text(view.repeatOne));
    rows.emplace_back("shuffle's previous", Text(view.shufflePrevious));
    rows.emplace_back("shuffle's next", Text(view.shuffleNext));
    rows.emplace_back("play list", TextOf(view.list));
    rows.emplace_back("library", TextOf(view.library));
    rows.emplace_back("play list window", view.isPlayListOpen ? "open" : "closed");
    rows.emplace_back("library window", view.isLibraryOpen ? "open" : "closed");
    rows.emplace_back("lyrics shown", Text(view.lyricsShown));
    rows.emplace_back("priority in the registry", Text(view.priority));
    rows.emplace_back("kept priority", Text(view.keptPriority));
}

void AddScreen(Rows& rows, const PlayerView& view)
{
    for (const auto& [command, button] : view.buttons)
        rows.emplace_back("button " + Text(command), std::string(button.isEnabled ? "enabled" : "disabled") +
                                                         (button.isShown ? ", shown" : ", hidden"));
    rows.emplace_back("slider", (view.isSliderEnabled ? "enabled " : "disabled ") + Text(view.sliderPosition));
    rows.emplace_back("title", view.title);
    rows.emplace_back("elapsed time", view.elapsed);
    rows.emplace_back("total time", view.total);
    rows.emplace_back("title strip A", TextOf(view.strips[0]));
    rows.emplace_back("title strip B", TextOf(view.strips[1]));
    std::string timers;
    for (const auto& [id, dueMs] : view.timers)
        timers += Text(id) + " at " + Text(dueMs) + ", ";
    rows.emplace_back("timers", timers);
}

Rows RowsOf(const PlayerView& view)
{
    Rows rows;
    AddState(rows, view);
    AddScreen(rows, view);
    rows.emplace_back("open song", view.openSong);
    rows.emplace_back("engine", view.engine);
    rows.emplace_back("engine's position", Text(view.position));
    return rows;
}

} // namespace

std::string Differences(const PlayerView& expected, const PlayerView& seen)
{
    const Rows should = RowsOf(expected);
    const Rows is = RowsOf(seen);
    std::string text;
    for (std::size_t i = 0; i < std::min(should.size(), is.size()); ++i)
        if (should[i] != is[i])
            text += "  " + should[i].first + ": should be \"" + should[i].second + "\", " +
                    (is[i].first == should[i].first ? "" : is[i].first + " ") + "is \"" + is[i].second + "\"\n";
    return should.size() == is.size() ? text : text + "  another number of things is seen\n";
}

std::string BrokenLaws(const PlayerView& seen)
{
    std::string text;
    const auto count = static_cast<int>(seen.list.size());
    int marks = 0;
    for (int i = 0; i < count; ++i) {
        const int mark = seen.list[static_cast<std::size_t>(i)].mark;
        marks += mark != 0 ? 1 : 0;
        if (mark != 0 && mark != i + 1)
            text += "  the mark of entry " + Text(i + 1) + " is " + Text(mark) + "\n";
    }
    if (marks > 1)
        text += "  " + Text(marks) + " entries are marked\n";
    if (seen.repeatAll != 0 && seen.repeatOne != 0)
        text += "  both repeat modes are on\n";
    if (seen.loaded != 0 ? seen.current < 1 || seen.current > count : seen.current != 0)
        text += "  the current number is " + Text(seen.current) + " of " + Text(count) + " songs\n";
    if (seen.playing != 0 && seen.loaded == 0)
        text += "  a player without a song plays\n";
    if (seen.buttons.at(258).isShown == (seen.playing != 0) || seen.buttons.at(259).isShown != (seen.playing != 0))
        text += "  the face of the play key is wrong\n";
    if (seen.timers.count(1000) != (seen.loaded != 0 ? 1U : 0U) ||
        seen.timers.count(100) != (seen.loaded != 0 ? 1U : 0U))
        text += "  the timers of a song do not run as long as it is loaded\n";
    if (seen.stepping != 0)
        text += "  the guard of the steps is left set\n";
    if ((seen.engine == "running") != (seen.playing != 0))
        text += "  the engine is " + seen.engine + "\n";
    return text;
}

} // namespace cardsong::test
