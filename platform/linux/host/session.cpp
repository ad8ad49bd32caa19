#include "platform/linux/host/session.h"

#include "platform/device_tree.h"
#include "platform/host/installed_tree.h"
#include "platform/host/skins.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/ce/messages.h"
#include "platform/linux/display/device_hands.h"
#include "platform/linux/display/headless_display.h"
#include "platform/linux/display/screenshot.h"
#include "platform/linux/host/card_broadcast.h"
#include "platform/linux/host/card_watch.h"
#include "platform/linux/host/device_layout.h"
#include "platform/linux/host/device_membership.h"
#include "platform/linux/host/end_watch.h"
#include "platform/linux/host/opened_songs.h"
#include "platform/linux/host/start_turn.h"
#include "platform/linux/kernel/start_trace.h"
#include "platform/linux/sound/sound_player.h"
#include "platform/linux/user/input.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace cardsong::host {
namespace {

constexpr int kFailed = 1;
constexpr int kBadOption = 2;
constexpr int kDisplayLost = 3;

// What a sound server is given at the end to fall silent in order.
constexpr std::chrono::milliseconds kServerLimit{ 60 };
// What the message bus is given to carry a second start's call to the player that runs.
constexpr std::chrono::milliseconds kCallLimit{ 1000 };

int Complain(const std::string& what, int status)
{
    std::fprintf(stderr, "cardsong: %s\n", what.c_str());
    return status;
}

std::unique_ptr<display::Display> MakeDisplay(const Options& options)
{
    if (options.headless)
        return std::make_unique<display::HeadlessDisplay>();
    return display::MakeDesktopDisplay({ options.scale, options.fullScreen, ProgramDesktopKeys(), options.turn });
}

// Opens the display while the player starts. One that cannot be opened ends the player. Returns why, or an empty text.
std::string OpenDisplay(display::Display& display)
{
    std::string trouble = display.Start();
    kernel::TraceStart("display open");
    if (!trouble.empty())
        user::PressExitKey();
    return trouble;
}

int RunPlayer(const Options& options)
{
    WString commandLine = options.playerCommandLine;
    return WinMain(kernel::ProgramInstance(), nullptr, commandLine.data(), SW_SHOW);
}

// The player itself finds the other one, calls it and ends. It needs no display for that.
int CallRunningPlayer(const Options& options, DeviceMembership& membership)
{
    membership.Join();
    const int result = RunPlayer(options);
    if (!membership.FinishPosting(kCallLimit))
        Complain("a player for " + options.deviceDirectory + " runs, and could not be called: no message bus", 0);
    return result;
}

// The player on a display of its own, from its start to its end.
int RunOnDisplay(const Options& options, std::vector<ScriptStep> script, EndWatch& endWatch,
                 DeviceMembership& membership)
{
    const auto display = MakeDisplay(options); // before any thread runs
    membership.Join();
    std::string trouble;
    std::thread opening([&] { trouble = OpenDisplay(*display); });
    std::atomic<bool> saved = options.screenshotFile.empty();
    endWatch.Start(options.runForSeconds, [&] { saved = saved || display::SaveScreenshot(options.screenshotFile); });
    CardWatch cardWatch;
    cardWatch.Start(options.cardDirectory, BroadcastCardChange);
    display::DeviceHands hands(ProgramDesktopKeys().mainWindowClass);
    ScriptPlayer player(hands);
    player.Start(std::move(script));

    const int result = RunPlayer(options);
    membership.LetNextStart(); // everything is saved: the next start need not wait for the rest

    sound::EndSound(kServerLimit);
    opening.join();
    player.Stop();
    cardWatch.Stop();
    display->Stop(); // a display server that hangs holds this: the watch can still end the process
    endWatch.Stop();
    saved = saved || display::SaveScreenshot(options.screenshotFile);
    if (display->IsLost())
        return Complain("the display went away; the play list is saved", kDisplayLost);
    if (!trouble.empty())
        return Complain(trouble, kFailed);
    if (!saved || !player.AllWritten())
        return Complain("a picture could not be written", kFailed);
    return result;
}

} // namespace

int RunSession(Options options)
{
    kernel::TraceStart("options read");
    std::signal(SIGPIPE, SIG_IGN); // who reads the log may go before the list is saved
    auto script = ParseInputScript(options.keyScript, ProgramDesktopKeys().commands);
    if (const auto* const error = std::get_if<ScriptError>(&script))
        return Complain("--keys: " + error->message, kBadOption);
    const auto installedTree = FindInstalledTree(ProgramFile());
    if (!installedTree)
        return Complain(ExplainMissingTree(ProgramFile()), kFailed);
    const auto skin = ChooseSkin(options.skin, options.deviceDirectory, *installedTree);
    if (const auto* const error = std::get_if<SkinError>(&skin))
        return Complain(error->message, kBadOption);
    StartTurn turn(options.deviceDirectory);
    if (!turn.Await())
        return Complain("another player is starting, and does not get on", kFailed);
    if (std::string trouble = OpenSongs(options); !trouble.empty())
        return Complain(trouble, kFailed);
    LayOutDevice(options, *installedTree, std::get<std::filesystem::path>(skin));

    EndWatch endWatch;
    DeviceMembership membership(options.deviceDirectory);
    turn.End();
    if (membership.IsSecond())
        return CallRunningPlayer(options, membership);
    return RunOnDisplay(options, std::get<std::vector<ScriptStep>>(std::move(script)), endWatch, membership);
}

} // namespace cardsong::host
