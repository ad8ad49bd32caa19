// Waits until a folder may have come or gone. Says only that it is worth a look, and knows no card.
#pragma once

#include <string>

namespace cardsong::host {

enum class AwaitedEvent {
    Going,  // renamed, deleted, or a file system mounted or unmounted anywhere
    Coming, // besides: something new in the folder, or where the folder is missing in the nearest one above it
};

// Sleeps in the kernel: what happens inside a folder that is there wakes nobody. Changes made while nobody waits are
// kept for the next wait.
class FolderEvents {
public:
    // `folder`: an absolute host path. `alarm`: a descriptor that ends a wait when it can be read; borrowed.
    FolderEvents(const std::string& folder, AwaitedEvent awaited, int alarm);
    ~FolderEvents();
    FolderEvents(const FolderEvents&) = delete;
    FolderEvents& operator=(const FolderEvents&) = delete;

    // True when it is worth a look; false when only the alarm ended the wait.
    [[nodiscard]] bool Wait() const;

private:
    void WatchPathTo(const std::string& folder, AwaitedEvent awaited) const;

    int m_paths;  // inotify
    int m_mounts; // the list of mounts, whose changes the kernel tells a poll
    int m_alarm;
};

} // namespace cardsong::host
