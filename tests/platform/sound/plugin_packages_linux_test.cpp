// The packages that users are told to install are those that hold the plug-ins.
#include "platform/linux/sound/gstreamer_library.h"
#include "platform/linux/sound/song_parts.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>

using namespace cardsong::sound;

namespace {

const std::string kFolder = CARDSONG_GSTREAMER_PLUGINS;
constexpr const char* kPlugins[] = {
    kConvert.plugin,          kResample.plugin, kVolume.plugin, kBalance.plugin, kMp3Decoder.plugin, kFileSource.plugin,
    kAsfDemultiplexer.plugin, kWmaPlugin,       "alsa",         "app",           "pulseaudio"
};

std::string FileOf(const std::string& plugin)
{
    return kFolder + "/libgst" + plugin + ".so";
}

// By file, as the system's list of packages has it: "gstreamer1.0-libav:amd64: /usr/lib/...".
std::map<std::string, std::string> PackagesByFile()
{
    std::string command = "dpkg-query --search";
    for (const char* const plugin : kPlugins)
        command += ' ' + FileOf(plugin);
    std::map<std::string, std::string> packages;
    std::FILE* const answer = popen((command + " 2>/dev/null").c_str(), "r");
    for (char line[1000]; std::fgets(line, sizeof line, answer) != nullptr;) {
        const std::string text = line;
        const std::size_t path = text.rfind(' ') + 1;
        packages[text.substr(path, text.size() - path - 1)] = text.substr(0, text.find(':'));
    }
    pclose(answer);
    return packages;
}

TEST(PluginPackages, AreTheOnesThatHoldThePluginsOnDebian)
{
    const auto packages = PackagesByFile();
    if (packages.empty())
        GTEST_SKIP() << "the plug-ins of this machine are in no Debian package";
    for (const char* const plugin : kPlugins) {
        const auto found = packages.find(FileOf(plugin));
        ASSERT_NE(found, packages.end()) << plugin;
        EXPECT_EQ(found->second, PackageOf(plugin)) << plugin;
    }
}

} // namespace
