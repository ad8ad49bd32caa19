// Which files the process has open, and what it lets others do with them meanwhile. Knows no path and no handle.
#pragma once

#include "platform/linux/kernel/host_files.h"

#include <optional>

namespace cardsong::kernel {

// One entry of the table of open files, taken out again by its destructor.
class OpenFileEntry {
public:
    // Nothing when another opening of the same file forbids `access` (GENERIC_...) or `share` (FILE_SHARE_...) forbids
    // what another opening already does.
    static std::optional<OpenFileEntry> Enter(const HostIdentity& file, DWORD access, DWORD share);

    OpenFileEntry(OpenFileEntry&& other) noexcept;
    OpenFileEntry& operator=(OpenFileEntry&&) = delete;
    ~OpenFileEntry();

private:
    explicit OpenFileEntry(std::uint64_t id) : m_id(id) {}

    std::uint64_t m_id;
};

// Whether any handle of the process is open on the file.
bool IsOpen(const HostIdentity& file);

} // namespace cardsong::kernel
