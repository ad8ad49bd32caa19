#include "platform/linux/kernel/registry_lock.h"

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <fcntl.h>
#include <mutex>
#include <sys/file.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace cardsong::kernel {
namespace {

constexpr std::chrono::milliseconds kPatience(400);
constexpr std::chrono::milliseconds kPatienceAfterwards(20);
constexpr int kNone = -1;

// The system's wait for a lock has no limit, and asking again and again is not fair to the one who asks less often. So
// one thread of the process waits, and the writers wait for it as long as they like.
class Waiter {
public:
    // The locked descriptor, which is the caller's now; kNone when it was not to be had in time.
    int WaitFor(const std::string& path)
    {
        std::unique_lock lock(m_mutex);
        const bool isNew = !m_isWaiting || m_path != path;
        if (isNew && !Begin(path))
            return kNone;
        m_isWanted = true;
        const auto until = std::chrono::steady_clock::now() + (isNew ? kPatience : kPatienceAfterwards);
        m_changed.wait_until(lock, until, [this] { return !m_isWaiting; });
        m_isWanted = false;
        return std::exchange(m_locked, kNone);
    }

private:
    // False when no thread is to be had, or the one there is still waits for another file. The mutex is held.
    bool Begin(const std::string& path)
    {
        if (m_isWaiting)
            return false;
        const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
        if (descriptor < 0)
            return false;
        try {
            std::thread(&Waiter::Wait, this, descriptor).detach();
        } catch (const std::system_error&) {
            close(descriptor);
            return false;
        }
        m_path = path;
        m_isWaiting = true;
        return true;
    }
    void Wait(int descriptor)
    {
        const bool isLocked = TEMP_FAILURE_RETRY(flock(descriptor, LOCK_EX)) == 0;
        const std::lock_guard lock(m_mutex);
        m_isWaiting = false;
        if (isLocked && m_isWanted)
            m_locked = descriptor;
        else
            close(descriptor); // lets the lock go
        m_changed.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_path;
    bool m_isWaiting = false;
    bool m_isWanted = false;
    int m_locked = kNone;
};

// Never destroyed: its thread may outlive the program's end.
Waiter& TheWaiter()
{
    static auto* const s_waiter = new Waiter;
    return *s_waiter;
}

} // namespace

RegistryLock::RegistryLock(const std::string& path)
    : m_descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666))
{
    if (m_descriptor < 0 || TEMP_FAILURE_RETRY(flock(m_descriptor, LOCK_EX | LOCK_NB)) == 0)
        return;
    const bool isTaken = errno == EWOULDBLOCK;
    close(m_descriptor);
    m_descriptor = isTaken ? TheWaiter().WaitFor(path) : kNone;
}

RegistryLock::~RegistryLock()
{
    if (m_descriptor >= 0)
        close(m_descriptor); // lets the lock go
}

} // namespace cardsong::kernel
