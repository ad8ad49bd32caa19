#include "platform/linux/display/event_wait.h"

#include <array>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace cardsong::display {

EventWait::EventWait() : m_wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

EventWait::~EventWait()
{
    close(m_wakeUp);
}

void EventWait::WakeUp()
{
    eventfd_write(m_wakeUp, 1);
}

short EventWait::Wait(int server, short events, int limitMs)
{
    std::array<pollfd, 2> sources = { { { m_wakeUp, POLLIN, 0 }, { server, events, 0 } } };
    if (poll(sources.data(), sources.size(), limitMs) <= 0)
        return 0;
    eventfd_t count = 0;
    eventfd_read(m_wakeUp, &count);
    return sources[1].revents;
}

} // namespace cardsong::display
