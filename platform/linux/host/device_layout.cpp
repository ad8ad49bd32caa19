#include "platform/linux/host/device_layout.h"

#include "platform/audio_sink.h"
#include "platform/console_notice.h"
#include "platform/device_tree.h"

#include <cstdio>

namespace cardsong::host {

std::filesystem::path ProgramFile()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

void LayOutDevice(const Options& options, const std::filesystem::path& installedTree, const std::filesystem::path& skin)
{
    kernel::DeviceTree tree;
    tree.userDirectory = options.deviceDirectory;
    tree.skinDirectory = skin.string();
    tree.systemDirectory = installedTree.string();
    tree.cardDirectory = options.cardDirectory;
    tree.uiLanguage = options.language;
    tree.debugOutput = options.verbose;
    kernel::InstallDeviceTree(tree);
    kernel::SetAudioSink(options.audioSink);
    kernel::TellNoticesTo(stderr);
}

} // namespace cardsong::host
