// Which window classes of a device are taken, as locks on files of its folder: one program at a time has a window of
// such a class. A lock ends with its process, however that ends. Knows no window and no bus.
#pragma once

#include <string>
#include <string_view>

namespace cardsong::bus {

enum class ClaimResult {
    Ours,
    Others,   // another program has it
    Unlocked, // the folder cannot be written, or its file system has no locks: nobody can tell
};

class ClassLock {
public:
    // `className`: ASCII letters, digits, '_' and '-'; other classes cannot be locked. `folder`: of the host.
    ClassLock(std::string folder, std::u16string_view className);
    ~ClassLock() { Release(); }
    ClassLock(const ClassLock&) = delete;
    ClassLock& operator=(const ClassLock&) = delete;

    // Makes the folder and the file where they are missing. Does not wait.
    [[nodiscard]] ClaimResult Claim();
    void Release();

    // Whether another process, or another lock of this one, holds the class now. Takes nothing and makes no file.
    [[nodiscard]] static bool IsTaken(const std::string& folder, std::u16string_view className);

private:
    const std::string m_folder;
    const std::string m_file; // empty: no class that can be locked
    int m_descriptor = -1;
};

} // namespace cardsong::bus
