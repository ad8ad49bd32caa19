#include "library/saved_play_list.h"

#include "common/file_search.h"
#include "library/card_of_list.h"
#include "library/play_list_file.h"

#include <unordered_set>

namespace {

WString Records(const CPtrListCtrl& list)
{
    WString records;
    std::int32_t number = 0;
    for (const MediaFileEntry& entry : ConstSongList(list))
        (records += PlayListRecordText(++number, entry)) += TEXT('\n');
    return records;
}

} // namespace

// Sorts the records of the file, as they come, into songs that are there and lists whose songs are away.
class SavedPlayList::Loading {
public:
    Loading(CPtrListCtrl& list, std::vector<std::unique_ptr<SongsAway>>& away) : m_list(list), m_allAway(away) {}

    void Add(WStringView record)
    {
        std::int32_t number = 0;
        std::unique_ptr<MediaFileEntry> entry = ReadPlayListRecord(record, &number);
        if (!entry)
            return;
        if (number <= m_lastNumber)
            EndList();
        m_lastNumber = number;
        if (!IsSongThere(*entry)) {
            SongList(m_away->songs).Append(std::move(entry));
            return;
        }
        ++m_thereCount;
        // A name that the lists of two cards share is one song on this card.
        const WString path = PathOf(*entry);
        if (m_pathsOfEarlierLists.count(path) > 0)
            return;
        m_paths.push_back(path);
        SongList(m_list).Append(std::move(entry));
    }

    void EndList()
    {
        const bool isOfThisCard = m_thereCount > m_away->songs.GetCount();
        if (!isOfThisCard && !m_away->songs.IsEmpty())
            m_allAway.push_back(std::move(m_away));
        m_away = std::make_unique<SongsAway>();
        m_thereCount = 0;
        m_pathsOfEarlierLists.insert(m_paths.begin(), m_paths.end());
        m_paths.clear();
    }

private:
    CPtrListCtrl& m_list;
    std::vector<std::unique_ptr<SongsAway>>& m_allAway;
    std::unordered_set<WString> m_pathsOfEarlierLists;
    // Of the list that is being read:
    std::unique_ptr<SongsAway> m_away = std::make_unique<SongsAway>();
    std::vector<WString> m_paths;
    std::int32_t m_thereCount = 0;
    std::int32_t m_lastNumber = 0;
};

void SavedPlayList::Load(CPtrListCtrl& list)
{
    m_away.clear();
    m_hasFile = IsPathThere(kPlayListFile);
    Loading loading(list, m_away);
    ReadPlayListRecords([&loading](WStringView record) { loading.Add(record); });
    loading.EndList();
    m_loaded = Records(list);
}

void SavedPlayList::TakeBack(CPtrListCtrl& list)
{
    const bool isAsLoaded = Records(list) == m_loaded;
    for (const auto& away : m_away) {
        const SongList songsAway(away->songs);
        for (std::int32_t i = 0; i < songsAway.Count();) {
            if (IsSongThere(songsAway.At(i)))
                SongList(list).Append(songsAway.Take(i));
            else
                ++i;
        }
    }
    if (isAsLoaded)
        m_loaded = Records(list);
}

void SavedPlayList::Save(const CPtrListCtrl& list) const
{
    if (m_hasFile && Records(list) == m_loaded)
        return;
    std::vector<const CPtrListCtrl*> lists{ &list };
    for (const auto& away : m_away)
        lists.push_back(&away->songs);
    SavePlayLists(lists);
}
