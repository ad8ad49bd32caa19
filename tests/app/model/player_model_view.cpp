// What should be seen of the player.
#include "tests/app/model/player_model.h"

namespace cardsong::test {

std::string PlayerModel::SavedList() const
{
    std::string text;
    int number = 0;
    for (const Entry& entry : m_list)
        text += std::to_string(++number) + "$" + m_songs[entry.song].name + "$\\SDMMC$" +
                std::to_string(static_cast<unsigned>(entry.duration)) + "\n";
    return text;
}

PlayerView PlayerModel::View() const
{
    PlayerView view;
    view.loaded = m_isLoaded ? 1 : 0;
    view.playing = m_isPlaying ? 1 : 0;
    view.current = m_current;
    view.interrupted = m_isInterrupted ? 1 : 0;
    view.savedPosition = m_savedPosition;
    view.shuffle = m_shuffle ? 1 : 0;
    view.repeatAll = m_repeat == Repeat::All ? 1 : 0;
    view.repeatOne = m_repeat == Repeat::Single ? 1 : 0;
    view.shufflePrevious = m_shufflePrevious;
    view.shuffleNext = m_shuffleNext;
    for (const Entry& entry : m_list)
        view.list.push_back({ m_songs[entry.song].name, entry.mark, entry.isPlayed, entry.duration });
    view.buttons = m_buttons;
    view.isSliderEnabled = m_isSliderEnabled;
    view.sliderPosition = m_sliderPosition;
    view.title = m_title;
    view.elapsed = m_elapsed;
    view.total = m_total;
    view.strips = { StripView{ m_stripA.isActive, m_stripA.left, m_stripA.right },
                    StripView{ m_stripB.isActive, m_stripB.left, m_stripB.right } };
    view.timers = m_timers;
    for (const LibraryEntry& entry : m_library)
        view.library.push_back({ m_songs[entry.song].name, entry.isChecked });
    view.isPlayListOpen = m_isPlayListOpen;
    view.isLibraryOpen = m_isLibraryOpen;
    view.lyricsShown = m_hasLyrics ? 1 : 0;
    view.openSong = m_engine.Name();
    constexpr const char* kStates[] = { "", "stopped", "paused", "running" };
    view.engine = kStates[static_cast<int>(m_engine.State())];
    view.position = m_engine.Position(Now());
    view.priority = m_priority.value_or(-1);
    view.keptPriority = m_keptPriority;
    return view;
}

} // namespace cardsong::test
