// Sees the songs in a list of untyped pointers: the one place that knows the items of PlayList and CardSongList by
// their type. It knows no file and no row of a window.
#pragma once

#include "library/media_entry.h"

#include <memory>

// Walks a list from its first song to its last. The list neither gains nor loses an item meanwhile, and holds no null.
template <typename Entry>
class SongIterator {
public:
    SongIterator(const CPtrListCtrl& list, std::int32_t index) : m_list(&list), m_index(index) {}

    Entry& operator*() const { return *static_cast<Entry*>(m_list->GetAt(m_index)); }
    SongIterator& operator++()
    {
        ++m_index;
        return *this;
    }
    bool operator==(const SongIterator& other) const { return m_index == other.m_index; }

private:
    const CPtrListCtrl* m_list;
    std::int32_t m_index;
};

// A view that reads. It borrows the list, which outlives it.
class ConstSongList {
public:
    explicit ConstSongList(const CPtrListCtrl& list) : m_list(list) {}

    std::int32_t Count() const { return m_list.GetCount(); }
    bool IsEmpty() const { return m_list.IsEmpty(); }
    // `index`: 0..Count()-1, of an item that is not null.
    const MediaFileEntry& At(std::int32_t index) const { return *Find(index); }
    // Null where the list has no item, or a null.
    const MediaFileEntry* Find(std::int32_t index) const;

    SongIterator<const MediaFileEntry> begin() const { return { m_list, 0 }; }
    SongIterator<const MediaFileEntry> end() const { return { m_list, Count() }; }

private:
    const CPtrListCtrl& m_list;
};

// A view that also changes the list. An entry in the list belongs to the list's owner, who calls FreeAll before the
// list ends.
class SongList {
public:
    explicit SongList(CPtrListCtrl& list) : m_list(list) {}

    std::int32_t Count() const { return m_list.GetCount(); }
    bool IsEmpty() const { return m_list.IsEmpty(); }
    // `index`: 0..Count()-1, of an item that is not null.
    MediaFileEntry& At(std::int32_t index) const { return *Find(index); }
    // Null where the list has no item, or a null.
    MediaFileEntry* Find(std::int32_t index) const;

    SongIterator<MediaFileEntry> begin() const { return { m_list, 0 }; }
    SongIterator<MediaFileEntry> end() const { return { m_list, Count() }; }

    // `entry`: not null. Returns it; the list has it now.
    MediaFileEntry& Append(std::unique_ptr<MediaFileEntry> entry) const;
    // Removes the entry from the list and hands it to the caller; null where the list has none.
    [[nodiscard]] std::unique_ptr<MediaFileEntry> Take(std::int32_t index) const;
    // Frees every entry from the last to the first and empties the list.
    void FreeAll() const;

private:
    CPtrListCtrl& m_list;
};
