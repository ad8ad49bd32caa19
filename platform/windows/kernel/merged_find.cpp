// Finding files: the listing of a folder, the user's entries laid over the installed ones.
#include "platform/file_patterns.h"
#include "platform/windows/kernel/device_calls.h"
#include "platform/windows/kernel/device_paths.h"
#include "platform/windows/kernel/host_paths.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>

namespace cardsong::kernel {
namespace {

struct Entry {
    WIN32_FIND_DATAW data;
    std::wstring folded; // its name, for comparing without case
};
using Entries = std::vector<Entry>;

Entry MakeEntry(const WIN32_FIND_DATAW& data)
{
    Entry entry{ data, data.cFileName };
    CharLowerBuffW(entry.folded.data(), static_cast<DWORD>(entry.folded.size()));
    return entry;
}

bool IsDots(const WIN32_FIND_DATAW& data)
{
    return wcscmp(data.cFileName, L".") == 0 || wcscmp(data.cFileName, L"..") == 0;
}

// A folder under the name by which the device knows it; a volume has no entry of its own on this system.
Entry FolderEntry(const HostPath& folder, const WString& name)
{
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    ::GetFileAttributesExW(folder.c_str(), GetFileExInfoStandard, &facts);
    WIN32_FIND_DATAW data{};
    data.dwFileAttributes = facts.dwFileAttributes & ~DWORD{ FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM };
    data.ftCreationTime = facts.ftCreationTime;
    data.ftLastAccessTime = facts.ftLastAccessTime;
    data.ftLastWriteTime = facts.ftLastWriteTime;
    name.copy(data.cFileName, MAX_PATH - 1);
    return MakeEntry(data);
}

// What the system finds, as it finds it. Answers ERROR_SUCCESS, or why there is nothing.
DWORD ListHostFolder(const HostPath& pattern, Entries& entries)
{
    WIN32_FIND_DATAW data;
    const HANDLE find = ::FindFirstFileW(pattern.c_str(), &data);
    if (find == INVALID_HANDLE_VALUE)
        return GetLastError();
    do
        entries.push_back(MakeEntry(data));
    while (::FindNextFileW(find, &data));
    ::FindClose(find);
    return ERROR_SUCCESS;
}

// The folders that the root shows although they need not lie in the user's tree.
Entries MountedEntries(const WString& pattern)
{
    Entries entries;
    for (const WString name : { L"Windows", L"SDMMC" }) {
        const auto folders = HostFoldersOf(ParseDevicePath(name));
        if (!folders.empty() && MatchesPattern(name, PreparePattern(pattern)))
            entries.push_back(FolderEntry(folders.front(), name));
    }
    return entries;
}

// An entry hides those of the layers below it that bear its name.
void AddLayer(Entries& merged, Entries layer, bool hasDots)
{
    std::erase_if(layer, [&](const Entry& entry) {
        return (!hasDots && IsDots(entry.data)) || std::any_of(merged.begin(), merged.end(), [&](const Entry& above) {
                   return above.folded == entry.folded;
               });
    });
    merged.insert(merged.end(), std::make_move_iterator(layer.begin()), std::make_move_iterator(layer.end()));
}

// In the order of names without case, as the device's own volumes are listed after a copy.
void Sort(Entries& entries)
{
    const auto less = [](const Entry& a, const Entry& b) {
        return IsDots(a.data) != IsDots(b.data) ? IsDots(a.data) : a.folded < b.folded;
    };
    std::stable_sort(entries.begin(), entries.end(), less);
}

DWORD List(const DevicePath& folder, WString pattern, Entries& entries)
{
    pattern.resize(pattern.find_last_not_of(L' ') + 1);
    const auto hostFolders = HostFoldersOf(folder);
    if (HasForeignName(folder))
        return ERROR_INVALID_NAME;
    if (hostFolders.empty() && !folder.IsRoot())
        return ERROR_PATH_NOT_FOUND;
    if (folder.IsRoot())
        entries = MountedEntries(pattern);
    DWORD error = ERROR_FILE_NOT_FOUND;
    for (const HostPath& hostFolder : hostFolders) {
        Entries layer;
        const DWORD layerError = ListHostFolder(PatternBelow(hostFolder, pattern), layer);
        error = layerError != ERROR_SUCCESS ? layerError : error;
        AddLayer(entries, std::move(layer), !folder.IsRoot() && !IsCard(folder));
    }
    Sort(entries);
    return entries.empty() ? error : DWORD{ ERROR_SUCCESS };
}

// Finds one file or folder by its name. A folder with a separator at the end is found, too, even an empty card: that is
// how the device's programs ask for a card ("SDMMC\"). Desktop systems find nothing then.
DWORD FindOne(const DevicePath& path, Entries& entries)
{
    if (path.IsRoot())
        return ERROR_FILE_NOT_FOUND;
    const HostPlace place = PlaceOf(path);
    if (place.error != ERROR_SUCCESS)
        return place.error;
    if (!Exists(place.path)) {
        const DWORD error = GetLastError();
        return place.exists ? DWORD{ ERROR_FILE_NOT_FOUND } : error; // a file is no folder
    }
    if (IsCard(path)) {
        entries.push_back(FolderEntry(place.path, path.names.back()));
        return ERROR_SUCCESS;
    }
    const auto end = place.path.find_last_not_of(L'\\') + 1;
    return ListHostFolder(place.path.substr(0, end), entries);
}

// The files of a search still to be told.
class Search {
public:
    explicit Search(Entries entries) : m_entries(std::move(entries)) {}

    // False at the end.
    bool Next(WIN32_FIND_DATAW& data)
    {
        const std::lock_guard lock(m_mutex);
        if (m_next == m_entries.size())
            return false;
        data = m_entries[m_next++].data;
        return true;
    }

private:
    std::mutex m_mutex;
    const Entries m_entries;
    std::size_t m_next = 0;
};

struct OpenSearches {
    std::mutex mutex;
    std::map<HANDLE, std::shared_ptr<Search>> searches;
};

OpenSearches& TheSearches()
{
    static auto* const s_searches = new OpenSearches; // outlives every handle
    return *s_searches;
}

std::shared_ptr<Search> SearchOf(HANDLE find)
{
    auto& open = TheSearches();
    const std::lock_guard lock(open.mutex);
    const auto found = open.searches.find(find);
    if (found == open.searches.end())
        SetLastError(ERROR_INVALID_HANDLE);
    return found == open.searches.end() ? nullptr : found->second;
}

} // namespace
} // namespace cardsong::kernel

namespace cardsong::device {

using namespace kernel;

HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data)
{
    const DevicePath path = ParseDevicePath(pattern != nullptr ? pattern : L"");
    const bool isSearch = !path.IsRoot() && !path.endsInSeparator && HasWildcard(path.names.back());
    Entries entries;
    DWORD error = ERROR_PATH_NOT_FOUND;
    if (data == nullptr)
        error = ERROR_INVALID_PARAMETER;
    else if (pattern != nullptr && *pattern != L'\0')
        error = isSearch ? List(path.Parent(), path.names.back(), entries) : FindOne(path, entries);
    if (error != ERROR_SUCCESS) {
        SetLastError(error);
        return INVALID_HANDLE_VALUE;
    }
    const auto search = std::make_shared<Search>(std::move(entries));
    search->Next(*data);
    auto& open = TheSearches();
    const std::lock_guard lock(open.mutex);
    open.searches.emplace(search.get(), search);
    return search.get();
}

BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data)
{
    const auto search = SearchOf(find);
    if (search == nullptr)
        return FALSE;
    if (data != nullptr && search->Next(*data))
        return TRUE;
    SetLastError(data != nullptr ? ERROR_NO_MORE_FILES : ERROR_INVALID_PARAMETER);
    return FALSE;
}

BOOL FindClose(HANDLE find)
{
    if (SearchOf(find) == nullptr)
        return FALSE;
    auto& open = TheSearches();
    const std::lock_guard lock(open.mutex);
    return open.searches.erase(find) != 0 ? TRUE : FALSE;
}

} // namespace cardsong::device
