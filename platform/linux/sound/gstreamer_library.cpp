#include "platform/linux/sound/gstreamer_library.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace cardsong::sound {

namespace {

// GStreamer asks the environment whether to leave its registry alone. The answer is given before main, when no other
// thread can be reading the environment. It lies in memory of ours, so that it can be taken back in place.
char g_registrySwitch[] = "GST_REGISTRY_DISABLE=yes";

const bool g_registryAnswered = std::getenv("GST_REGISTRY_DISABLE") == nullptr && putenv(g_registrySwitch) == 0;

void TakeRegistryAnswerBack()
{
    // Programs that this one starts inherit the environment and may well want the registry.
    std::memcpy(std::strchr(g_registrySwitch, '=') + 1, "no", sizeof "no");
}

std::vector<std::string> PluginFolders()
{
    std::vector<std::string> folders;
    for (const char* variable :
         { "GST_PLUGIN_PATH_1_0", "GST_PLUGIN_PATH", "GST_PLUGIN_SYSTEM_PATH_1_0", "GST_PLUGIN_SYSTEM_PATH" }) {
        const char* const value = std::getenv(variable);
        std::istringstream list(value == nullptr ? "" : value);
        for (std::string folder; std::getline(list, folder, ':');)
            folders.push_back(folder);
    }
    folders.emplace_back(CARDSONG_GSTREAMER_PLUGINS);
    return folders;
}

bool IsKnown(const char* factory)
{
    GstElementFactory* const found = gst_element_factory_find(factory);
    if (found != nullptr)
        gst_object_unref(found);
    return found != nullptr;
}

void LoadPlugin(const std::string& plugin)
{
    for (const std::string& folder : PluginFolders()) {
        const auto file = std::filesystem::path(folder) / ("libgst" + plugin + ".so");
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(file, ignored))
            continue;
        if (GstPlugin* const loaded = gst_plugin_load_file(file.c_str(), nullptr)) {
            gst_object_unref(loaded);
            return;
        }
    }
}

void LookThroughAllPlugins()
{
    for (const std::string& folder : PluginFolders())
        gst_registry_scan_path(gst_registry_get(), folder.c_str());
}

} // namespace

bool StartGstreamer()
{
    static std::once_flag s_once;
    static bool s_started = false;
    std::call_once(s_once, [] {
        gst_segtrap_set_enabled(FALSE);
        s_started = gst_init_check(nullptr, nullptr, nullptr) != FALSE;
        if (g_registryAnswered)
            TakeRegistryAnswerBack();
    });
    return s_started;
}

ElementPtr MakeElement(const char* factory, const char* plugin)
{
    static std::mutex s_loading;
    {
        const std::lock_guard lock(s_loading);
        if (!IsKnown(factory)) {
            if (plugin != nullptr)
                LoadPlugin(plugin);
            else
                LookThroughAllPlugins();
        }
    }
    GstElement* const element = gst_element_factory_make(factory, nullptr);
    return ElementPtr(element == nullptr ? nullptr : GST_ELEMENT(gst_object_ref_sink(element)));
}

const char* PackageOf(const char* plugin)
{
    struct Held {
        std::string_view plugin;
        const char* package;
    };
    constexpr Held kHeld[] = {
        { "alsa", "gstreamer1.0-alsa" },
        { "asf", "gstreamer1.0-plugins-ugly" },
        { "audiofx", "gstreamer1.0-plugins-good" },
        { "coreelements", "libgstreamer1.0-0" },
        { "libav", "gstreamer1.0-libav" },
        { "mpg123", "gstreamer1.0-plugins-good" },
        { "pulseaudio", "gstreamer1.0-plugins-good" },
    };
    for (const Held& held : kHeld) {
        if (held.plugin == plugin)
            return held.package;
    }
    return "gstreamer1.0-plugins-base";
}

} // namespace cardsong::sound
