// Events: set, reset and pulsed; named ones are shared within the process.
#include "platform/linux/kernel/waits.h"

#include <map>
#include <string>

namespace cardsong::kernel {
namespace {

class EventObject final : public WaitableObject {
public:
    EventObject(bool isManual, bool isSet) : m_isManual(isManual), m_isSet(isSet) {}

    void Set()
    {
        const std::lock_guard lock(m_mutex);
        m_isSet = true;
        m_changed.notify_all();
    }
    void Reset()
    {
        const std::lock_guard lock(m_mutex);
        m_isSet = false;
    }
    // Lets those go who wait at this moment (all, or one when the event resets itself), and is reset afterwards.
    void Pulse()
    {
        const std::lock_guard lock(m_mutex);
        m_isSet = false;
        if (m_waiters == 0)
            return;
        ++m_pulses;
        m_pulseLeft = true;
        m_changed.notify_all();
    }

private:
    bool TryTake(std::uint64_t ticket) override
    {
        if (m_isSet) {
            m_isSet = m_isManual;
            return true;
        }
        const bool waitedBeforePulse = ticket != m_pulses && m_pulseLeft;
        if (waitedBeforePulse && !m_isManual)
            m_pulseLeft = false;
        return waitedBeforePulse;
    }
    std::uint64_t BeginWait() override
    {
        ++m_waiters;
        return m_pulses;
    }
    void EndWait() override { --m_waiters; }

    const bool m_isManual;
    bool m_isSet;
    bool m_pulseLeft = false;
    std::uint64_t m_pulses = 0;
    unsigned m_waiters = 0;
};

std::mutex g_namesMutex;

std::map<std::u16string, std::weak_ptr<EventObject>>& NamedEvents()
{
    static auto* const s_events = new std::map<std::u16string, std::weak_ptr<EventObject>>;
    return *s_events;
}

} // namespace
} // namespace cardsong::kernel

using namespace cardsong::kernel;

HANDLE CreateEventW(SECURITY_ATTRIBUTES*, BOOL manualReset, BOOL initiallySet, LPCWSTR name)
{
    const auto create = [&] { return std::make_shared<EventObject>(manualReset != FALSE, initiallySet != FALSE); };
    DWORD error = ERROR_SUCCESS;
    std::shared_ptr<EventObject> event;
    if (name && *name) {
        const std::lock_guard lock(g_namesMutex);
        std::erase_if(NamedEvents(), [](const auto& entry) { return entry.second.expired(); });
        auto& known = NamedEvents()[name];
        event = known.lock();
        if (event)
            error = ERROR_ALREADY_EXISTS;
        else
            known = event = create();
    } else {
        event = create();
    }
    const HANDLE handle = InsertHandle(std::move(event));
    if (handle)
        SetLastError(error);
    return handle;
}

BOOL EventModify(HANDLE event, DWORD action)
{
    const auto object = ObjectAs<EventObject>(event);
    if (!object)
        return FALSE;
    switch (action) {
    case EVENT_PULSE: object->Pulse(); return TRUE;
    case EVENT_RESET: object->Reset(); return TRUE;
    case EVENT_SET: object->Set(); return TRUE;
    default: SetLastError(ERROR_INVALID_PARAMETER); return FALSE;
    }
}
