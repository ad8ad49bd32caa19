#include "common/fm_settings.h"

#include "common/file_stream.h"
#include "common/kernel_handles.h"

#include <bit>

namespace {

constexpr LPCWSTR kFolder = TEXT("PocketStoreII\\TAVO");
constexpr LPCWSTR kSubFolder = TEXT("PocketStoreII\\TAVO\\FM_Trans");
constexpr LPCWSTR kFile = TEXT("PocketStoreII\\TAVO\\FM_Trans\\FM_TransData.dat");

static_assert(sizeof(FmSettings) == 20 && std::endian::native == std::endian::little);

} // namespace

int EnsureFmSettingsFile()
{
    if (OpenForReading(kFile))
        return 1;
    CreateDirectoryW(kFolder, nullptr);
    CreateDirectoryW(kSubFolder, nullptr);
    const UniqueFile file(CreateFileW(kFile, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    const FmSettings defaults;
    DWORD writtenBytes = 0;
    if (file)
        WriteFile(file.Get(), &defaults, sizeof defaults, &writtenBytes, nullptr);
    return 0;
}

int ReadFmSettings(FmSettings& settings)
{
    const UniqueFileStream file = OpenForReading(kFile);
    FmSettings read;
    if (!file || std::fread(&read, sizeof read, 1, file.Get()) != 1)
        return 0;
    settings = read;
    return 1;
}
