// The lock of the registry's file among programs. Knows nothing of what the file holds.
#pragma once

#include <string>

namespace cardsong::kernel {

// Held from before the file is read until after it is replaced, by one writer at a time. A program that is stopped
// while it holds the lock does not stop the others: each gives up after half a second, and until the lock is free again
// its further attempts take a twentieth of that. One writer of a process at a time.
class RegistryLock {
public:
    // `path`: of the file that is locked; it is made when it is missing.
    explicit RegistryLock(const std::string& path);
    ~RegistryLock();
    RegistryLock(const RegistryLock&) = delete;
    RegistryLock& operator=(const RegistryLock&) = delete;
    bool IsHeld() const { return m_descriptor >= 0; }

private:
    int m_descriptor = -1;
};

} // namespace cardsong::kernel
