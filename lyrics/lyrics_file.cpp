#include "lyrics/lyrics_file.h"

#include "common/kernel_handles.h"
#include "lyrics/embedded_lyrics.h"

std::optional<LyricsBytes> ReadLyricsFile(const WCHAR* path)
{
    const UniqueFile file(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return std::nullopt;
    DWORD sizeHigh = 0;
    const DWORD sizeBytes = GetFileSize(file.Get(), &sizeHigh);
    if (sizeHigh != 0 || sizeBytes > kMostLyricsBytes) // a size that is not known is larger, too
        return std::nullopt;
    LyricsBytes bytes(sizeBytes + 1);
    DWORD readBytes = 0;
    if (ReadFile(file.Get(), bytes.data(), sizeBytes, &readBytes, nullptr) == FALSE)
        return std::nullopt;
    bytes.resize(readBytes);
    bytes.push_back(0);
    return bytes;
}
