#include "platform/linux/host/opened_songs.h"

#include "platform/linux/host/device_players.h"
#include "platform/linux/host/opened_card.h"
#include "platform/linux/host/opened_device.h"
#include "platform/linux/host/running_player.h"

#include <filesystem>

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;

constexpr const char* kDevice = "Device";
constexpr const char* kCard = "Card";

// Where the named songs are, whatever happens to the current folder. What is not there goes to `missing`, as one line.
std::vector<NamedSong> FindSongs(const std::vector<std::string>& names, std::string& missing)
{
    std::vector<NamedSong> songs;
    for (const std::string& name : names) {
        std::error_code error;
        NamedSong song{ {}, std::filesystem::canonical(name, error) };
        if (error)
            missing = name + ": " + error.message();
        else
            song.place = std::filesystem::absolute(name, error);
        songs.push_back(std::move(song));
    }
    return songs;
}

// The folder of named songs, which is made whole beside the one that a player may be using.
class OpenedFolder {
public:
    explicit OpenedFolder(const Path& usersDevice)
        : m_usersDevice(usersDevice), m_place(FolderOfOpenedSongs(usersDevice)), m_fresh(Beside(".new")),
          m_replaced(Beside(".old"))
    {
    }
    ~OpenedFolder()
    {
        for (const Path& folder : { m_fresh, m_replaced })
            std::filesystem::remove_all(folder, m_ignored); // what stays is in the way of nobody but the next start
    }
    OpenedFolder(const OpenedFolder&) = delete;
    OpenedFolder& operator=(const OpenedFolder&) = delete;

    [[nodiscard]] std::error_code Make(const std::vector<NamedSong>& songs) const
    {
        std::error_code error;
        for (const Path& left : { m_fresh, m_replaced }) { // by a start that was killed
            if (std::filesystem::remove_all(left, error); error)
                return error;
        }
        if (std::filesystem::create_directories(m_fresh / kDevice, error); error)
            return error;
        if (std::filesystem::create_directory(m_fresh / kCard, error); error)
            return error;
        error = LinkSongs(songs, m_fresh / kCard);
        return error ? error : BorrowFromUser(m_usersDevice, m_fresh / kDevice);
    }

    // No player uses the former one.
    [[nodiscard]] std::error_code PutInPlace()
    {
        std::error_code error;
        std::filesystem::rename(m_place, m_replaced, error);
        if (error && error != std::errc::no_such_file_or_directory)
            return error;
        std::filesystem::rename(m_fresh, m_place, error);
        if (error)
            std::filesystem::rename(m_replaced, m_place, m_ignored);
        return error;
    }

    std::string Explain(const std::error_code& error) const { return m_place.string() + ": " + error.message(); }
    std::string Device() const { return m_place / kDevice; }
    std::string Card() const { return m_place / kCard; }

private:
    Path Beside(const char* suffix) const { return m_place.string() + suffix; }

    const Path m_usersDevice;
    const Path m_place;
    const Path m_fresh;
    const Path m_replaced;
    std::error_code m_ignored;
};

constexpr const char* kInTheWay = "another player runs, and does not end";

} // namespace

std::string OpenSongs(Options& options)
{
    std::string missing;
    const std::vector<NamedSong> songs = FindSongs(options.songs, missing);
    if (!missing.empty())
        return missing;
    const std::string openedDevice = DeviceOfOpenedSongs(options.deviceDirectory);
    if (songs.empty())
        return EndPlayerOn(openedDevice) ? std::string() : kInTheWay;

    OpenedFolder folder(options.deviceDirectory);
    if (const auto error = folder.Make(songs))
        return folder.Explain(error);
    if (!EndPlayerOn(openedDevice) || !EndPlayerOn(options.deviceDirectory))
        return kInTheWay;
    if (const auto error = folder.PutInPlace())
        return folder.Explain(error);
    options.deviceDirectory = folder.Device();
    options.cardDirectory = folder.Card();
    options.playerCommandLine += TEXT("--fill --play ");
    return {};
}

} // namespace cardsong::host
