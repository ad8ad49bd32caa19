#include "platform/linux/host/opened_songs.h"

#include "platform/desktop_keys.h"
#include "platform/device_visit.h"
#include "platform/linux/bus/class_lock.h"
#include "platform/linux/ce/messages.h"
#include "platform/linux/host/child_question.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;

constexpr const char* kOpenedFolder = ".cardsong-opened"; // no name of a folder that a user has;
constexpr const char* kRegistryFile = "registry.ini";
constexpr std::chrono::milliseconds kVisitLimit{ 2000 };
constexpr std::chrono::milliseconds kEndLimit{ 3000 };
constexpr std::chrono::milliseconds kLook{ 5 };

bool IsPlayerThere(const Path& device)
{
    return bus::ClassLock::IsTaken(device.string(), ProgramDesktopKeys().mainWindowClass);
}

// In a process of its own, since the visit starts threads.
void GiveExitCommandIn(const Path& device)
{
    const auto visit = [&device] {
        DeviceVisit asVisitor(device.string());
        const DesktopKeys program = ProgramDesktopKeys();
        PostMessageW(FindWindowW(program.mainWindowClass, nullptr), WM_COMMAND, program.exitCommand, 0);
        return std::string(asVisitor.FinishPosting() ? "posted" : "no bus");
    };
    static_cast<void>(ChildQuestion(visit, kVisitLimit).Await()); // whether it was heard shows at the lock
}

// False when it is there after all.
bool EndPlayer(const Path& device)
{
    if (!IsPlayerThere(device))
        return true;
    GiveExitCommandIn(device);
    const auto limit = std::chrono::steady_clock::now() + kEndLimit;
    while (IsPlayerThere(device) && std::chrono::steady_clock::now() < limit)
        std::this_thread::sleep_for(kLook);
    return !IsPlayerThere(device);
}

// Where the named songs are, whatever happens to the current folder. What is not there goes to `missing`, as one line.
std::vector<Path> WholePaths(const std::vector<std::string>& names, std::string& missing)
{
    std::vector<Path> songs;
    for (const std::string& name : names) {
        std::error_code error;
        songs.push_back(std::filesystem::canonical(name, error));
        if (error)
            missing = name + ": " + error.message();
    }
    return songs;
}

// What the player finds beside a song: its lyrics.
void LinkLyrics(const Path& song, const Path& folder)
{
    for (const char* const extension : { ".lrc", ".LRC" }) {
        const Path lyrics = Path(song).replace_extension(extension);
        std::error_code error;
        if (std::filesystem::is_regular_file(lyrics, error))
            std::filesystem::create_symlink(lyrics, folder / lyrics.filename(), error);
    }
}

// Each song has a folder of its own, so that songs of one name stand beside each other. A card is listed in the order
// of the names.
Path FolderOfSong(const Path& card, std::size_t index)
{
    char name[24];
    std::snprintf(name, sizeof(name), "%06zu", index + 1);
    return card / name;
}

void LinkSongs(const std::vector<Path>& songs, const Path& card, std::error_code& error)
{
    for (std::size_t i = 0; i < songs.size() && !error; ++i) {
        const Path folder = FolderOfSong(card, i);
        std::filesystem::create_directory(folder, error);
        std::filesystem::create_symlink(songs[i], folder / (songs[i].has_filename() ? songs[i].filename() : "root"),
                                        error);
        LinkLyrics(songs[i], folder);
    }
}

void CopyRegistry(const Path& from, const Path& to)
{
    std::error_code isMissing; // nothing was set yet
    std::filesystem::copy_file(from / kRegistryFile, to / kRegistryFile, isMissing);
}

} // namespace

std::string OpenSongs(Options& options)
{
    std::string trouble;
    const std::vector<Path> songs = WholePaths(options.songs, trouble);
    if (!trouble.empty())
        return trouble;
    const Path opened = Path(options.deviceDirectory) / kOpenedFolder;
    const Path device = opened / "Device";
    const Path card = opened / "Card";
    if (!EndPlayer(device) || (!songs.empty() && !EndPlayer(options.deviceDirectory)))
        return "another player runs, and does not end";
    if (songs.empty())
        return {};

    std::error_code error;
    std::filesystem::remove_all(opened, error);
    std::filesystem::create_directories(device, error);
    std::filesystem::create_directory(card, error);
    LinkSongs(songs, card, error);
    if (error)
        return opened.string() + ": " + error.message();
    CopyRegistry(options.deviceDirectory, device);
    options.deviceDirectory = device.string();
    options.cardDirectory = card.string();
    options.playerCommandLine += TEXT("--fill --play ");
    return {};
}

} // namespace cardsong::host
