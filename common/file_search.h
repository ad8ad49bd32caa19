// What stands in a folder of the device, entry by entry, and whether a path leads anywhere.
#pragma once

#include "common/unique_handle.h"

struct FindTraits : InvalidWhenNone {
    static void Close(HANDLE find) { FindClose(find); }
};
using UniqueFind = UniqueHandle<FindTraits>;

// One run over the entries that match a pattern, "." and ".." among them; it stands on an entry or at the end:
//     for (FileSearch search(pattern); search; search.Next())
class FileSearch {
public:
    // Finds the first entry. `pattern`: as FindFirstFileW takes it; a path without wildcards finds what it names.
    explicit FileSearch(const WCHAR* pattern) : m_find(FindFirstFileW(pattern, &m_entry)), m_hasEntry(m_find) {}
    FileSearch(const FileSearch&) = delete;
    FileSearch& operator=(const FileSearch&) = delete;

    explicit operator bool() const { return m_hasEntry; }
    // Only on an entry.
    const WIN32_FIND_DATAW& Entry() const { return m_entry; }
    void Next() { m_hasEntry = FindNextFileW(m_find.Get(), &m_entry) != FALSE; }

private:
    WIN32_FIND_DATAW m_entry{};
    UniqueFind m_find;
    bool m_hasEntry;
};

// Whether `path` leads to a file or a folder. Wildcards in it count as such.
inline bool IsPathThere(const WCHAR* path)
{
    return static_cast<bool>(FileSearch(path));
}
