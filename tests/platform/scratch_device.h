// A device of its own for one test: empty user, system and card folders below a fresh temporary folder, installed as
// the device tree and removed at the end, its registry too.
#pragma once

#include "platform/device_tree.h"
#ifdef _WIN32
#include "platform/windows/kernel/registry.h"
#endif

#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace cardsong::test {

class ScratchDevice {
public:
    ScratchDevice() : m_root(FreshFolder())
    {
        for (const char* folder : { "user", "system", "card", "user/scratch" })
            std::filesystem::create_directories(m_root / folder);
        m_before = kernel::CurrentDeviceTree();
        kernel::DeviceTree tree;
        tree.userDirectory = UserDirectory();
        tree.systemDirectory = SystemDirectory();
        tree.cardDirectory = CardDirectory();
        kernel::InstallDeviceTree(tree);
    }
    ~ScratchDevice()
    {
#ifdef _WIN32
        RegDeleteTreeW(HKEY_CURRENT_USER, kernel::MachineKeyOfDevice().c_str());
#endif
        kernel::InstallDeviceTree(m_before);
        std::error_code ignored;
        std::filesystem::remove_all(InEveryName(m_root), ignored);
    }
    ScratchDevice(const ScratchDevice&) = delete;
    ScratchDevice& operator=(const ScratchDevice&) = delete;

    // Host folders, without a trailing separator.
    std::string UserDirectory() const
    {
        return (m_root / "user").string();
    }
    std::string SystemDirectory() const
    {
        return (m_root / "system").string();
    }
    std::string CardDirectory() const
    {
        return (m_root / "card").string();
    }

    // Writes a host file named from the device's temporary folder: "card/Music/a.mp3", "user/Windows/b.txt",
    // "system/Windows/c.gif". Missing folders are made.
    void WriteFile(const std::string& hostRelativePath, std::string_view contents = {}) const
    {
        const auto path = Place(hostRelativePath);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary).write(contents.data(), static_cast<std::streamsize>(contents.size()));
    }
    void MakeFolder(const std::string& hostRelativePath) const
    {
        std::filesystem::create_directories(Place(hostRelativePath));
    }
    // The bytes of a host file named as for WriteFile; empty when there is none.
    std::string ReadFile(const std::string& hostRelativePath) const
    {
        std::ifstream file(Place(hostRelativePath), std::ios::binary);
        return { std::istreambuf_iterator<char>(file), {} };
    }

    // A device path in an empty folder ("user/scratch" for WriteFile).
    WString Path(WStringView name) const
    {
        return TEXT("\\scratch\\") + WString(name);
    }

private:
    // Names are UTF-8, whatever the host takes narrow ones for.
    std::filesystem::path Place(const std::string& hostRelativePath) const
    {
        return m_root / std::u8string(hostRelativePath.begin(), hostRelativePath.end());
    }
    // The root in the form in which names such as "NUL", and long paths, are reached too.
    static std::filesystem::path InEveryName(const std::filesystem::path& root)
    {
#ifdef _WIN32
        return L"\\\\?\\" + root.wstring();
#else
        return root;
#endif
    }
    static std::filesystem::path FreshFolder()
    {
        static std::atomic<unsigned> s_count = 0;
        static const unsigned s_process = std::random_device{}();
        return std::filesystem::temp_directory_path() /
               ("cardsong-" + std::to_string(s_process) + "-" + std::to_string(s_count++));
    }

    std::filesystem::path m_root;
    kernel::DeviceTree m_before;
};

} // namespace cardsong::test
