// Finding files: the listing of a folder, the user's entries laid over the installed ones.
#include "platform/file_patterns.h"
#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/handles.h"
#include "platform/linux/kernel/host_files.h"
#include "platform/linux/kernel/host_names.h"
#include "platform/linux/kernel/unicode.h"

#include <algorithm>
#include <dirent.h>
#include <mutex>

namespace cardsong::kernel {
namespace {

struct Entry {
    Entry(std::u16string deviceName, std::string path)
        : name(std::move(deviceName)), folded(ToLower(name)), hostPath(std::move(path))
    {
    }

    std::u16string name; // as the device sees it
    std::u16string folded;
    std::string hostPath;
};

void FillFindData(const std::u16string& name, const HostFacts& facts, WIN32_FIND_DATAW& data)
{
    data = {};
    data.dwFileAttributes = facts.attributes;
    data.ftCreationTime = facts.created;
    data.ftLastAccessTime = facts.accessed;
    data.ftLastWriteTime = facts.written;
    data.nFileSizeHigh = static_cast<DWORD>(facts.sizeBytes >> 32);
    data.nFileSizeLow = static_cast<DWORD>(facts.sizeBytes);
    name.copy(data.cFileName, MAX_PATH - 1);
}

// The files of a search still to be told. Names are listed once; what else is told of a file is read when its turn
// comes.
class FindObject final : public KernelObject {
public:
    explicit FindObject(std::vector<Entry> entries) : m_entries(std::move(entries)) {}
    bool ClosesWithCloseHandle() const override { return false; }

    // False at the end.
    bool Next(WIN32_FIND_DATAW& data)
    {
        const std::lock_guard lock(m_mutex);
        while (m_next < m_entries.size()) {
            const Entry& entry = m_entries[m_next++];
            const auto facts = ReadHostFacts(entry.hostPath);
            if (!facts)
                continue;
            FillFindData(entry.name, *facts, data);
            return true;
        }
        return false;
    }

private:
    std::mutex m_mutex;
    std::vector<Entry> m_entries;
    std::size_t m_next = 0;
};

// Adds the entries of one host folder that fit.
void ListHostFolder(const std::string& hostFolder, std::u16string_view pattern, std::vector<Entry>& entries)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(hostFolder.c_str()), closedir);
    if (!folder)
        return;
    while (const dirent* const found = readdir(folder.get())) {
        const std::string_view hostName = found->d_name;
        auto name = DeviceNameFromHost(hostName);
        if (hostName != "." && hostName != ".." && MatchesPattern(name, pattern))
            entries.push_back({ std::move(name), hostFolder + '/' + found->d_name });
    }
}

// In the order of names without case, as the device's own volumes are listed after a copy: the same on every machine.
// Of names that are equal without case within one layer both stay; an upper layer hides those of the layers below it.
void SortAndMerge(std::vector<Entry>& merged, std::vector<Entry> layer)
{
    const auto less = [](const Entry& a, const Entry& b) {
        return a.folded == b.folded ? a.name < b.name : a.folded < b.folded;
    };
    const auto lessIgnoringCase = [](const Entry& a, const Entry& b) { return a.folded < b.folded; };
    std::erase_if(layer, [&](const Entry& entry) {
        return std::binary_search(merged.begin(), merged.end(), entry, lessIgnoringCase);
    });
    merged.insert(merged.end(), std::make_move_iterator(layer.begin()), std::make_move_iterator(layer.end()));
    std::sort(merged.begin(), merged.end(), less);
}

std::vector<Entry> MountedEntries(std::u16string_view pattern)
{
    std::vector<Entry> entries;
    for (const auto& name : MountedNames()) {
        const auto folders = HostFoldersOf(ParseDevicePath(name));
        if (!folders.empty() && MatchesPattern(name, pattern))
            entries.push_back({ name, folders.front() });
    }
    return entries;
}

std::vector<Entry> ListFolder(const DevicePath& path, const std::vector<std::string>& hostFolders,
                              std::u16string_view pattern)
{
    std::vector<Entry> entries;
    if (path.IsRoot())
        SortAndMerge(entries, MountedEntries(pattern));
    for (const auto& hostFolder : hostFolders) {
        std::vector<Entry> layer;
        ListHostFolder(hostFolder, pattern, layer);
        SortAndMerge(entries, std::move(layer));
    }
    if (IsVolumeRoot(path) || hostFolders.empty())
        return entries;
    std::vector<Entry> all;
    for (const auto* const name : { u".", u".." }) {
        if (MatchesPattern(name, pattern))
            all.push_back({ name, hostFolders.front() });
    }
    all.insert(all.end(), std::make_move_iterator(entries.begin()), std::make_move_iterator(entries.end()));
    return all;
}

// One file or folder by its name, or a folder with a separator at the end: such a path answers with the folder itself,
// on an empty card too. That is how the device's programs ask for a card ("SDMMC\"), though elsewhere it finds nothing.
std::vector<Entry> FindOne(const DevicePath& path, DWORD& error)
{
    if (path.IsRoot())
        return {};
    auto found = FindOnHost(path);
    const bool isMounted = IsVolumeRoot(path);
    if (found.Found() && path.endsInSeparator && HostFoldersOf(path).empty())
        found.error = ERROR_FILE_NOT_FOUND; // a file is no folder
    if (!found.Found()) {
        error = found.error;
        return {};
    }
    const auto hostName = found.hostPath.substr(found.hostPath.rfind('/') + 1);
    return { { isMounted ? path.names.back() : DeviceNameFromHost(hostName), found.hostPath } };
}

} // namespace
} // namespace cardsong::kernel

using namespace cardsong::kernel;

HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data)
{
    DWORD error = ERROR_FILE_NOT_FOUND;
    std::vector<Entry> entries;
    const auto path = ParseDevicePath(pattern ? std::u16string_view(pattern) : std::u16string_view());
    const bool isSearch = !path.IsRoot() && !path.endsInSeparator && HasWildcard(path.names.back());
    if (!pattern || !*pattern) {
        error = ERROR_PATH_NOT_FOUND;
    } else if (isSearch) {
        const auto folder = path.Parent();
        const auto hostFolders = HostFoldersOf(folder);
        if (hostFolders.empty() && !folder.IsRoot())
            error = HasForeignName(folder) ? ERROR_INVALID_NAME : ERROR_PATH_NOT_FOUND;
        entries = ListFolder(folder, hostFolders, PreparePattern(path.names.back()));
    } else {
        entries = FindOne(path, error);
    }
    const auto find = std::make_shared<FindObject>(std::move(entries));
    if (!data || !find->Next(*data)) {
        SetLastError(data ? error : ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE handle = InsertHandle(find);
    return handle ? handle : INVALID_HANDLE_VALUE;
}

BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data)
{
    const auto object = ObjectAs<FindObject>(find);
    if (!object)
        return FALSE;
    if (data && object->Next(*data))
        return TRUE;
    SetLastError(data ? ERROR_NO_MORE_FILES : ERROR_INVALID_PARAMETER);
    return FALSE;
}

BOOL FindClose(HANDLE find)
{
    return CloseAs<FindObject>(find) ? TRUE : FALSE;
}
