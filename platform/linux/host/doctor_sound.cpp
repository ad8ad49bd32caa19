// Whether songs can be decoded and heard.
#include "platform/linux/host/doctor_findings.h"
#include "platform/linux/sound/audio_sinks.h"
#include "platform/linux/sound/song_parts.h"

#include <cstdlib>
#include <filesystem>
#include <vector>

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;

std::string Text(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value != nullptr ? value : "";
}

// The sound server's client makes a file for its cookie in the user's folder of settings when there is none. Here it
// gets no such folder then, and its settings by name.
void KeepClientFromWriting()
{
    const Path home = Text("HOME");
    const Path named = Text("XDG_CONFIG_HOME");
    const Path settings = (named.empty() ? home / ".config" : named) / "pulse";
    std::error_code error;
    if (std::filesystem::exists(settings / "cookie", error) || std::filesystem::exists(home / ".pulse-cookie", error))
        return;
    if (std::filesystem::exists(settings / "client.conf", error))
        setenv("PULSE_CLIENTCONFIG", (settings / "client.conf").c_str(), 0);
    setenv("XDG_CONFIG_HOME", "/dev/null", 1);
}

// Empty when every part is there, else what to install.
std::string MissingPackages(const std::vector<sound::Part>& parts)
{
    if (!sound::StartGstreamer())
        return "libgstreamer1.0-0";
    std::string packages;
    for (const sound::Part& part : parts) {
        const std::string package = sound::PackageOf(part.plugin);
        if (!sound::MakeElement(part.factory, part.plugin) && packages.find(package) == std::string::npos)
            packages += (packages.empty() ? "" : " ") + package;
    }
    return packages;
}

Finding LookAtParts(const std::vector<sound::Part>& parts)
{
    const std::string missing = MissingPackages(parts);
    if (!missing.empty())
        return { Verdict::Bad, "cannot be decoded; install " + missing };
    return { Verdict::Good, "can be decoded" };
}

std::string FactoryOf(GstElement* element)
{
    return gst_plugin_feature_get_name(GST_PLUGIN_FEATURE(gst_element_get_factory(element)));
}

// Why no sound is heard.
Finding ExplainSilence()
{
    const struct {
        bool isThere;
        sound::Part sink;
        const char* name;
    } ways[] = { { sound::HasSoundServer(), { "pulsesink", "pulseaudio" }, "the sound server" },
                 { sound::HasSoundCard(), { "alsasink", "alsa" }, "the sound card" } };
    std::string why;
    for (const auto& way : ways) {
        if (!way.isThere)
            continue;
        const std::string package = MissingPackages({ way.sink });
        why += (why.empty() ? "" : "; ") + std::string(way.name) +
               (package.empty() ? " refuses sound" : " needs the package " + package + ", which is not installed");
    }
    if (why.empty())
        why = "no sound server answers, and there is no sound card; install pulseaudio or pipewire-pulse";
    return { Verdict::Bad, why };
}

} // namespace

Finding LookAtMp3(const Options&)
{
    return LookAtParts({ sound::kConvert, sound::kResample, sound::kVolume, sound::kBalance, sound::kMp3Decoder });
}

Finding LookAtWma(const Options&)
{
    return LookAtParts({ sound::kConvert,
                         sound::kResample,
                         sound::kVolume,
                         sound::kBalance,
                         sound::kFileSource,
                         sound::kAsfDemultiplexer,
                         { sound::kUsualWmaDecoder, sound::kWmaPlugin } });
}

Finding LookAtSound(const Options& options)
{
    KeepClientFromWriting();
    if (!sound::StartGstreamer())
        return { Verdict::Bad, "GStreamer cannot start; install libgstreamer1.0-0" };
    const sound::ElementPtr sink = sound::OpenAudioSink(options.audioSink, sound::SoundRole::Music);
    if (!sink)
        return { Verdict::Bad, "GStreamer has no elements of its own; install libgstreamer1.0-0" };
    const std::string factory = FactoryOf(sink.get());
    if (factory == "pulsesink")
        return { Verdict::Good, "the sound server takes songs" };
    if (factory == "alsasink")
        return { Verdict::Good, "the sound card takes songs" };
    if (factory == "fakesink" && options.audioSink != "null")
        return ExplainSilence();
    return { Verdict::Good, "songs go to " + options.audioSink + ", as asked" };
}

} // namespace cardsong::host
