// What the doctor says where decoders are not installed: this program looks for GStreamer's plug-ins in a folder that
// holds those alone that a test puts there.
#include "platform/linux/host/child_question.h"
#include "platform/linux/host/doctor_findings.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace cardsong::host;

namespace {

const std::vector<const char*> kCommon = { "audioconvert", "audiofx", "audioresample", "coreelements", "volume" };

// A process has the plug-ins for ever that it once loaded: each finding has one of its own.
Finding FindWith(Finding (*look)(const Options&), std::vector<const char*> plugins)
{
    const std::filesystem::path folder = CARDSONG_GSTREAMER_PLUGINS;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    for (const char* const plugin : plugins) {
        const std::string name = "libgst" + std::string(plugin) + ".so";
        std::filesystem::create_symlink(std::filesystem::path(CARDSONG_ALL_GSTREAMER_PLUGINS) / name, folder / name);
    }
    ChildQuestion question(
        [&] {
            const Finding finding = look({});
            return std::to_string(static_cast<int>(finding.verdict)) + finding.text;
        },
        std::chrono::seconds(60));
    const std::string text = question.Await().text;
    return text.empty() ? Finding{} : Finding{ static_cast<Verdict>(text[0] - '0'), text.substr(1) };
}

std::vector<const char*> With(std::vector<const char*> plugins, const std::vector<const char*>& others)
{
    plugins.insert(plugins.end(), others.begin(), others.end());
    return plugins;
}

void Expect(const Finding& finding, Verdict verdict, const std::string& text)
{
    EXPECT_EQ(finding.verdict, verdict) << finding.text;
    EXPECT_EQ(finding.text, text);
}

TEST(DoctorWithoutPlugins, EveryPackageThatIsMissingIsNamedOnce)
{
    Expect(FindWith(LookAtMp3, {}), Verdict::Bad,
           "cannot be decoded; install gstreamer1.0-plugins-base gstreamer1.0-plugins-good");
    Expect(FindWith(LookAtWma, { "coreelements" }), Verdict::Bad,
           "cannot be decoded; install gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-ugly "
           "gstreamer1.0-libav");
}

TEST(DoctorWithoutPlugins, Mp3NeedsItsDecoderAlone)
{
    Expect(FindWith(LookAtMp3, kCommon), Verdict::Bad, "cannot be decoded; install gstreamer1.0-plugins-good");
    Expect(FindWith(LookAtMp3, With(kCommon, { "mpg123" })), Verdict::Good, "can be decoded");
}

TEST(DoctorWithoutPlugins, WmaNeedsDemultiplexerAndDecoder)
{
    Expect(FindWith(LookAtWma, With(kCommon, { "mpg123", "libav" })), Verdict::Bad,
           "cannot be decoded; install gstreamer1.0-plugins-ugly");
    Expect(FindWith(LookAtWma, With(kCommon, { "mpg123", "asf" })), Verdict::Bad,
           "cannot be decoded; install gstreamer1.0-libav");
    Expect(FindWith(LookAtWma, With(kCommon, { "asf", "libav" })), Verdict::Good, "can be decoded");
}

TEST(DoctorWithoutPlugins, ASoundServerNeedsItsPlugin)
{
    setenv("PULSE_SERVER", "unix:/none", 1);
    Expect(FindWith(LookAtSound, kCommon), Verdict::Bad,
           "the sound server needs the package gstreamer1.0-plugins-good, which is not installed");
    Expect(FindWith(LookAtSound, With(kCommon, { "pulseaudio" })), Verdict::Bad, "the sound server refuses sound");
    unsetenv("PULSE_SERVER");
}

} // namespace
