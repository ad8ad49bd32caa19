// A small file of the device in memory. For both systems' rooms.
#pragma once

#include "platform/ce.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace cardsong::kernel {

// Nothing when there is no such file, it cannot be read whole, or it is larger than `maxBytes`.
inline std::optional<std::vector<std::byte>> ReadWholeFile(LPCWSTR path, DWORD maxBytes)
{
    const HANDLE file =
        CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::optional<std::vector<std::byte>> bytes;
    DWORD sizeHigh = 0;
    const DWORD sizeBytes = GetFileSize(file, &sizeHigh);
    if (sizeBytes != INVALID_FILE_SIZE && sizeHigh == 0 && sizeBytes <= maxBytes) {
        DWORD readBytes = 0;
        bytes.emplace(sizeBytes);
        if (!ReadFile(file, bytes->data(), sizeBytes, &readBytes, nullptr) || readBytes != sizeBytes)
            bytes.reset();
    }
    CloseHandle(file);
    return bytes;
}

} // namespace cardsong::kernel
