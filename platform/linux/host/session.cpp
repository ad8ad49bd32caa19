#include "platform/linux/host/session.h"

#include "platform/audio_sink.h"
#include "platform/console_notice.h"
#include "platform/device_tree.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/ce/messages.h"
#include "platform/linux/display/device_hands.h"
#include "platform/linux/display/headless_display.h"
#include "platform/linux/display/screenshot.h"
#include "platform/linux/host/end_watch.h"
#include "platform/linux/kernel/start_trace.h"

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace cardsong::host {
namespace {

constexpr int kFailed = 1;
constexpr int kBadScript = 2;

int Complain(const std::string& what, int status)
{
    std::fprintf(stderr, "cardsong: %s\n", what.c_str());
    return status;
}

// The installed device tree: beside an installed program in its share folder, beside one that was just built in its
// build folder.
std::string FindSystemDirectory()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    const auto folder = program.parent_path();
    for (const auto& tree : { folder.parent_path() / "share" / "cardsong" / "device", folder / "device" / "tree" })
        if (std::filesystem::is_directory(tree, error))
            return tree.string();
    return {};
}

void LayOutDevice(const Options& options)
{
    kernel::DeviceTree tree;
    tree.userDirectory = options.deviceDirectory;
    tree.systemDirectory = FindSystemDirectory();
    tree.cardDirectory = options.cardDirectory;
    tree.uiLanguage = options.language;
    tree.debugOutput = options.verbose;
    kernel::InstallDeviceTree(tree);
    kernel::SetAudioSink(options.audioSink);
    kernel::TellNoticesTo(stderr);
}

std::unique_ptr<display::Display> MakeDisplay(const Options& options)
{
    if (options.headless)
        return std::make_unique<display::HeadlessDisplay>();
    return display::MakeSdlDisplay({ options.scale, options.fullScreen });
}

// Opens the display while the player starts; a display that cannot be opened ends the player. Returns why.
std::string OpenDisplay(display::Display& display)
{
    std::string trouble = display.Start();
    kernel::TraceStart("display open");
    if (!trouble.empty())
        PressExitKey();
    return trouble;
}

std::u16string CommandLineFor(const Options& options)
{
    std::u16string line;
    if (options.fill)
        line += TEXT("--fill ");
    if (options.verbose)
        line += TEXT("--report ");
    return line;
}

} // namespace

int RunSession(const Options& options)
{
    kernel::TraceStart("options read");
    auto script = ParseInputScript(options.keyScript);
    if (const auto* const error = std::get_if<ScriptError>(&script))
        return Complain("--keys: " + error->message, kBadScript);
    LayOutDevice(options);

    EndWatch endWatch;
    const auto display = MakeDisplay(options);
    std::string trouble;
    std::thread opening([&] { trouble = OpenDisplay(*display); });
    std::atomic<bool> saved = options.screenshotFile.empty();
    endWatch.Start(options.runForSeconds, [&] { saved = saved || display::SaveScreenshot(options.screenshotFile); });
    display::DeviceHands hands;
    ScriptPlayer player(hands);
    player.Start(std::get<std::vector<ScriptStep>>(std::move(script)));

    std::u16string commandLine = CommandLineFor(options);
    const int result = WinMain(kernel::ProgramInstance(), nullptr, commandLine.data(), SW_SHOW);

    opening.join();
    player.Stop();
    endWatch.Stop();
    saved = saved || display::SaveScreenshot(options.screenshotFile);
    display->Stop();
    if (!trouble.empty())
        return Complain(trouble, kFailed);
    if (!saved || !player.AllWritten())
        return Complain("a picture could not be written", kFailed);
    return result;
}

} // namespace cardsong::host
