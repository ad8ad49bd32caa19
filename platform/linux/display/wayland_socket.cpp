#include "platform/linux/display/wayland_socket.h"

#include <cerrno>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace cardsong::display {

namespace {

// 0, or the number of the trouble. The limit for sending is that for connecting, too; libwayland, which sends later,
// never waits there.
int ConnectWithin(int connection, const sockaddr_un& address, int limitMs)
{
    const timeval limit = { limitMs / 1000, limitMs % 1000 * 1000 };
    if (setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof(limit)) != 0)
        return errno;
    while (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        if (errno != EINTR)
            return errno;
    }
    return 0;
}

std::string Explain(int error)
{
    return error == EAGAIN ? "it does not answer" : std::generic_category().message(error);
}

} // namespace

int ConnectToCompositor(const std::string& name, int limitMs, std::string& trouble)
{
    std::string path = name;
    if (!name.starts_with('/')) {
        const char* const folder = std::getenv("XDG_RUNTIME_DIR");
        if (folder == nullptr || *folder != '/') {
            trouble = folder == nullptr ? "XDG_RUNTIME_DIR is not set" : "XDG_RUNTIME_DIR is no whole path";
            return -1;
        }
        path = std::string(folder) + "/" + name;
    }
    sockaddr_un address{ AF_UNIX, {} };
    if (path.size() >= sizeof(address.sun_path)) {
        trouble = Explain(ENAMETOOLONG);
        return -1;
    }
    path.copy(address.sun_path, path.size());
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int error = connection < 0 ? errno : ConnectWithin(connection, address, limitMs);
    if (error == 0)
        return connection;
    if (connection >= 0)
        close(connection);
    trouble = Explain(error);
    return -1;
}

} // namespace cardsong::display
