#include "platform/linux/kernel/open_files.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace cardsong::kernel {
namespace {

struct Entry {
    std::uint64_t id;
    HostIdentity file;
    DWORD access;
    DWORD share;
};

struct Table {
    std::mutex mutex;
    std::vector<Entry> entries; // a player has a handful of files open
    std::uint64_t lastId = 0;
};

Table& TheTable()
{
    static auto* const s_table = new Table; // outlives every handle
    return *s_table;
}

bool Allows(DWORD share, DWORD access)
{
    return ((access & GENERIC_READ) == 0 || (share & FILE_SHARE_READ) != 0) &&
           ((access & GENERIC_WRITE) == 0 || (share & FILE_SHARE_WRITE) != 0);
}

} // namespace

std::optional<OpenFileEntry> OpenFileEntry::Enter(const HostIdentity& file, DWORD access, DWORD share)
{
    auto& table = TheTable();
    const std::lock_guard lock(table.mutex);
    for (const Entry& other : table.entries) {
        const bool onlyAsks = access == 0 || other.access == 0; // asking for attributes disturbs nobody
        if (other.file == file && !onlyAsks && (!Allows(other.share, access) || !Allows(share, other.access)))
            return std::nullopt;
    }
    table.entries.push_back({ ++table.lastId, file, access, share });
    return OpenFileEntry(table.lastId);
}

OpenFileEntry::OpenFileEntry(OpenFileEntry&& other) noexcept : m_id(std::exchange(other.m_id, 0)) {}

OpenFileEntry::~OpenFileEntry()
{
    if (m_id == 0)
        return;
    auto& table = TheTable();
    const std::lock_guard lock(table.mutex);
    std::erase_if(table.entries, [this](const Entry& entry) { return entry.id == m_id; });
}

bool IsOpen(const HostIdentity& file)
{
    auto& table = TheTable();
    const std::lock_guard lock(table.mutex);
    return std::any_of(table.entries.begin(), table.entries.end(),
                       [&file](const Entry& entry) { return entry.file == file; });
}

} // namespace cardsong::kernel
