#include "platform/linux/host/card_watch.h"

#include "platform/linux/host/folder_events.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <filesystem>

namespace cardsong::host {

CardWatch::~CardWatch()
{
    Stop();
}

void CardWatch::Start(const std::string& folder, std::function<void(CardChange)> tell)
{
    m_alarm = folder.empty() ? -1 : eventfd(0, EFD_CLOEXEC);
    if (m_alarm < 0)
        return;
    std::error_code error;
    const std::string path = std::filesystem::absolute(folder, error).string();
    m_thread = std::thread(
        [this, path, card = FindCard(path, std::nullopt), run = std::move(tell)] { Watch(path, card, run); });
}

void CardWatch::Stop()
{
    if (!m_thread.joinable())
        return;
    eventfd_write(m_alarm, 1);
    m_thread.join();
    close(m_alarm);
}

// Each look comes after the events are listened to, so that none is lost between the two.
void CardWatch::Watch(const std::string& folder, std::optional<CardIdentity> card,
                      const std::function<void(CardChange)>& tell) const
{
    for (;;) {
        const FolderEvents events(folder, card ? AwaitedEvent::Going : AwaitedEvent::Coming, m_alarm);
        const auto found = FindCard(folder, card);
        if (found == card) {
            if (!events.Wait())
                return;
            continue;
        }
        if (card)
            tell(CardChange::Gone);
        if (found)
            tell(CardChange::Come);
        card = found;
    }
}

} // namespace cardsong::host
