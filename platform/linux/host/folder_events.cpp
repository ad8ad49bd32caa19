#include "platform/linux/host/folder_events.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <iterator>

namespace cardsong::host {
namespace {

constexpr std::uint32_t kGoes = IN_MOVE_SELF | IN_DELETE_SELF | IN_MASK_ADD;
constexpr std::uint32_t kComes = IN_CREATE | IN_MOVED_TO | IN_MASK_ADD;

} // namespace

FolderEvents::FolderEvents(const std::string& folder, AwaitedEvent awaited, int alarm)
    : m_paths(inotify_init1(IN_CLOEXEC)), m_mounts(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)), m_alarm(alarm)
{
    WatchPathTo(folder, awaited);
}

FolderEvents::~FolderEvents()
{
    for (const int descriptor : { m_paths, m_mounts })
        if (descriptor >= 0)
            close(descriptor);
}

// Each folder on the way may be renamed, and each link on it replaced. A watch names a folder, not a path.
void FolderEvents::WatchPathTo(const std::string& folder, AwaitedEvent awaited) const
{
    if (m_paths < 0)
        return;
    std::filesystem::path path;
    std::filesystem::path nearest;
    for (const auto& part : std::filesystem::path(folder)) {
        path /= part;
        inotify_add_watch(m_paths, path.c_str(), kGoes | IN_DONT_FOLLOW);
        if (inotify_add_watch(m_paths, path.c_str(), kGoes) < 0)
            break;
        nearest = path;
    }
    if (awaited == AwaitedEvent::Coming)
        inotify_add_watch(m_paths, nearest.c_str(), kComes);
}

bool FolderEvents::Wait() const
{
    pollfd waits[] = { { m_alarm, POLLIN, 0 }, { m_paths, POLLIN, 0 }, { m_mounts, POLLPRI, 0 } };
    while (poll(waits, std::size(waits), -1) < 0)
        if (errno != EINTR)
            return false;
    return waits[1].revents != 0 || waits[2].revents != 0;
}

} // namespace cardsong::host
