#include "platform/linux/host/opened_device.h"

#include "platform/linux/kernel/folder_names.h"
#include "platform/linux/kernel/host_names.h"
#include "platform/linux/kernel/unicode.h"

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;

constexpr const char* kRegistryFile = "registry.ini";
constexpr const char* kWindows = "Windows";
constexpr std::u16string_view kSavedFiles[] = { u"play_list.txt", u"play_list.new" }; // by the player, in Windows
constexpr std::u16string_view kDocuments = u"My Documents";
constexpr std::u16string_view kLyrics = u"Lyrics";

std::error_code CopyRegistry(const Path& from, const Path& to)
{
    std::error_code error;
    if (std::filesystem::exists(from / kRegistryFile, error)) // else nothing was set yet
        std::filesystem::copy_file(from / kRegistryFile, to / kRegistryFile, error);
    return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
}

bool IsSavedFile(const Path& file)
{
    for (const auto saved : kSavedFiles) {
        if (kernel::EqualIgnoringCase(kernel::DeviceNameFromHost(file.filename().string()), saved))
            return true;
    }
    return false;
}

std::error_code LinkWindows(const Path& from, const Path& to)
{
    std::error_code error;
    std::error_code isMissing;
    std::filesystem::directory_iterator entries(from / kWindows, isMissing);
    if (isMissing)
        return {};
    std::filesystem::create_directory(to / kWindows, error);
    while (!error && entries != std::filesystem::directory_iterator()) {
        std::error_code unknown;
        const Path file = entries->path();
        if (entries->is_regular_file(unknown) && !IsSavedFile(file))
            std::filesystem::create_symlink(file, to / kWindows / file.filename(), error);
        entries.increment(unknown); // at the end when it fails
    }
    return error;
}

std::error_code LinkLyricsFolder(const Path& from, const Path& to)
{
    std::error_code error;
    const auto documents = kernel::FindNameIgnoringCase(from, kDocuments);
    const auto lyrics = documents ? kernel::FindNameIgnoringCase(from / *documents, kLyrics) : std::nullopt;
    if (!lyrics || !std::filesystem::is_directory(from / *documents / *lyrics, error))
        return {};
    std::filesystem::create_directory(to / *documents, error);
    if (!error)
        std::filesystem::create_directory_symlink(from / *documents / *lyrics, to / *documents / *lyrics, error);
    return error;
}

} // namespace

std::error_code BorrowFromUser(const Path& usersDevice, const Path& device)
{
    std::error_code error;
    const Path from = std::filesystem::canonical(usersDevice, error);
    for (const auto borrow : { CopyRegistry, LinkWindows, LinkLyricsFolder }) {
        if (!error)
            error = borrow(from, device);
    }
    return error;
}

} // namespace cardsong::host
