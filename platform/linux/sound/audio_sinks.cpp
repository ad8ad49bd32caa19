#include "platform/linux/sound/audio_sinks.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

namespace cardsong::sound {

namespace {

// A long buffer lets the processor sleep. Pause, stop and seek act at once all the same, for they drop what it holds.
constexpr gint64 kBufferUs = 2'000'000;
constexpr gint64 kLatencyUs = 500'000;

std::vector<std::string> ServerSockets()
{
    std::vector<std::string> sockets;
    if (const char* const folder = std::getenv("PULSE_RUNTIME_PATH"))
        sockets.push_back(std::string(folder) + "/native");
    if (const char* const folder = std::getenv("XDG_RUNTIME_DIR"))
        sockets.push_back(std::string(folder) + "/pulse/native");
    sockets.push_back("/run/user/" + std::to_string(getuid()) + "/pulse/native");
    sockets.push_back("/run/pulse/native");
    return sockets;
}

bool Answers(const std::string& socketPath)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, socketPath.c_str(), socketPath.size() + 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (connection < 0)
        return false;
    const bool answers = connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(connection);
    return answers;
}

ElementPtr Opened(ElementPtr sink)
{
    if (sink && gst_element_set_state(sink.get(), GST_STATE_READY) == GST_STATE_CHANGE_FAILURE) {
        gst_element_set_state(sink.get(), GST_STATE_NULL);
        return nullptr;
    }
    return sink;
}

ElementPtr OpenBuffered(ElementPtr sink)
{
    if (sink)
        g_object_set(sink.get(), "buffer-time", kBufferUs, "latency-time", kLatencyUs, nullptr);
    return Opened(std::move(sink));
}

void TellRole(GstElement* sink, SoundRole role)
{
    GstStructure* const properties =
        gst_structure_new("props", "media.role", G_TYPE_STRING, role == SoundRole::Music ? "music" : "event", nullptr);
    g_object_set(sink, "stream-properties", properties, nullptr);
    gst_structure_free(properties);
}

// The sound server's clock is a guess between its reports, and now and then a wild one just after a pause or a seek:
// the song would then stand still for ever. So the server only takes sound, and the system's clock keeps the time.
ElementPtr OpenPulse(SoundRole role)
{
    ElementPtr sink = MakeElement("pulsesink", "pulseaudio");
    if (!sink)
        return nullptr;
    gst_util_set_object_arg(G_OBJECT(sink.get()), "slave-method", "none");
    g_object_set(sink.get(), "provide-clock", FALSE, nullptr);
    TellRole(sink.get(), role);
    return OpenBuffered(std::move(sink));
}

ElementPtr OpenServer(SoundRole role)
{
    return HasSoundServer() ? OpenPulse(role) : nullptr;
}
ElementPtr OpenCard(SoundRole)
{
    return HasSoundCard() ? OpenBuffered(MakeElement("alsasink", "alsa")) : nullptr;
}

ElementPtr OpenSilence(SoundRole)
{
    ElementPtr sink = MakeElement("fakesink", "coreelements");
    if (sink)
        g_object_set(sink.get(), "sync", TRUE, "enable-last-sample", FALSE, nullptr);
    return Opened(std::move(sink));
}

ElementPtr OpenNamed(const std::string& name, SoundRole role)
{
    if (name == "null")
        return OpenSilence(role);
    if (name == "pulse")
        return OpenPulse(role);
    if (name == "alsa")
        return OpenBuffered(MakeElement("alsasink", "alsa"));
    return Opened(MakeElement(name.c_str(), nullptr));
}

} // namespace

ElementPtr OpenAudioSink(const std::string& name, SoundRole role)
{
    ElementPtr sink;
    if (!name.empty())
        sink = OpenNamed(name, role);
    for (const auto open : { OpenServer, OpenCard, OpenSilence }) {
        if (!sink)
            sink = open(role);
    }
    return sink;
}

// Asked first because the client library would start a server where none runs, and wait for it.
bool HasSoundServer()
{
    if (std::getenv("PULSE_SERVER") != nullptr)
        return true;
    for (const std::string& path : ServerSockets()) {
        if (Answers(path))
            return true;
    }
    return false;
}

bool HasSoundCard()
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/snd", ignored)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("pcm") && name.ends_with("p"))
            return true;
    }
    return false;
}

} // namespace cardsong::sound
