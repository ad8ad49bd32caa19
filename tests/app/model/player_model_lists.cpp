// The play list window, the library window, and what they do to the lists.
#include "tests/app/model/player_model.h"

#include <algorithm>
#include <utility>

namespace cardsong::test {

void PlayerModel::ObeyList(int command)
{
    switch (command) {
    case 16:
        Mark(0);
        ClosePlayList();
        break;
    case 24: OpenPlayList(); break;
    case 25: OpenLibrary(); break;
    case 28: ClearList(); break;
    case 29:
        if (!m_list.empty()) {
            Stop();
            PlayOrPause();
            ClosePlayList();
        }
        break;
    case 30: CheckAllOrNone(); break;
    case 31: AddWholeCard(); break;
    case 33: RemoveMarked(); break;
    case 35:
        CloseLibrary();
        MoveFromLibrary(false);
        break;
    default: break;
    }
}

// ---- the windows ----

// One that is open makes room for the new one.
void PlayerModel::OpenPlayList()
{
    if (m_list.empty())
        AddWholeCard();
    ClosePlayList();
    m_isPlayListOpen = true;
    m_active = Top::PlayList;
}

void PlayerModel::ClosePlayList()
{
    if (!std::exchange(m_isPlayListOpen, false))
        return;
    if (m_isLibraryOnList)
        CloseLibrary();
    Leave(Top::PlayList, Top::Main);
}

void PlayerModel::OpenLibrary()
{
    ScanCard(false);
    for (LibraryEntry& entry : m_library)
        entry.isChecked = false;
    CloseLibrary();
    m_isLibraryOpen = true;
    m_isLibraryOnList = m_isPlayListOpen;
    m_active = Top::Library;
}

void PlayerModel::CloseLibrary()
{
    if (!std::exchange(m_isLibraryOpen, false))
        return;
    Leave(Top::Library, std::exchange(m_isLibraryOnList, false) ? Top::PlayList : Top::Main);
}

// The owner of a window that was active becomes active. To the player its own windows are no other program, neither
// when they come nor when they go.
void PlayerModel::Leave(Top window, Top owner)
{
    if (m_active == window)
        m_active = owner;
}

// ---- the lists ----

// A song that either list has is not found again.
void PlayerModel::ScanCard(bool intoPlayList)
{
    for (std::size_t song = 0; song < m_songs.size(); ++song) {
        const bool isListed = std::ranges::find(m_list, song, &Entry::song) != m_list.end() ||
                              std::ranges::find(m_library, song, &LibraryEntry::song) != m_library.end();
        if (isListed || !m_songs[song].isThere)
            continue;
        if (intoPlayList)
            m_list.push_back({ song });
        else
            m_library.push_back({ song });
    }
}

void PlayerModel::AddWholeCard()
{
    ScanCard(true);
    MoveFromLibrary(true);
}

void PlayerModel::MoveFromLibrary(bool all)
{
    for (const LibraryEntry& entry : m_library)
        if (all || entry.isChecked)
            m_list.push_back({ entry.song });
    std::erase_if(m_library, [all](const LibraryEntry& entry) { return all || entry.isChecked; });
}

void PlayerModel::CheckAllOrNone()
{
    const bool areAllChecked = std::ranges::all_of(m_library, &LibraryEntry::isChecked);
    for (LibraryEntry& entry : m_library)
        entry.isChecked = !areAllChecked;
}

void PlayerModel::ClearList()
{
    Stop();
    m_list.clear();
}

void PlayerModel::RemoveMarked()
{
    const auto marked = std::ranges::find_if(m_list, [](const Entry& entry) { return entry.mark != 0; });
    if (marked == m_list.end())
        return;
    const int number = marked->mark;
    m_list.erase(m_list.begin() + (number - 1));
    if (m_isLoaded && number < m_current)
        --m_current;
    else if (m_isLoaded && number == m_current)
        Stop();
    if (number <= Count())
        At(number).mark = number;
}

} // namespace cardsong::test
