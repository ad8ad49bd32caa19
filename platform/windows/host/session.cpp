#include "platform/windows/host/session.h"

#include "platform/audio_sink.h"
#include "platform/console_notice.h"
#include "platform/device_tree.h"
#include "platform/host/installed_tree.h"
#include "platform/host/skins.h"
#include "platform/windows/host/desktop_hands.h"
#include "platform/windows/host/end_watch.h"
#include "platform/windows/host/whole_path.h"
#include "platform/windows/kernel/utf8.h"
#include "platform/windows/screen/desktop_keyboard.h"
#include "platform/windows/screen/device_screen.h"
#include "platform/windows/screen/screenshot.h"

#include <atomic>
#include <cstdio>
#include <filesystem>

namespace cardsong::host {
namespace {

constexpr int kFailed = 1;
constexpr int kBadOption = 2;

int Complain(const std::string& what, int status)
{
    std::fprintf(stderr, "cardsong: %s\n", what.c_str());
    return status;
}

std::filesystem::path ProgramFile()
{
    std::wstring program(32'767, L'\0'); // the longest path
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return program;
}

void LayOutDevice(const Options& options, const std::filesystem::path& installedTree, const std::filesystem::path& skin)
{
    kernel::DeviceTree tree;
    tree.userDirectory = WholePath(options.deviceDirectory);
    tree.skinDirectory = skin.empty() ? std::string() : WholePath(kernel::Utf8FromUtf16(skin.wstring()));
    tree.systemDirectory = kernel::Utf8FromUtf16(installedTree.wstring());
    tree.cardDirectory = options.cardDirectory.empty() ? std::string() : WholePath(options.cardDirectory);
    tree.uiLanguage = options.language;
    tree.debugOutput = options.verbose;
    kernel::InstallDeviceTree(tree);
    kernel::SetAudioSink(options.audioSink);
    kernel::TellNoticesTo(stderr);
}

screen::ScreenOptions ScreenFor(const Options& options)
{
    const auto frame = options.headless     ? screen::Frame::Hidden
                       : options.fullScreen ? screen::Frame::FullScreen
                                            : screen::Frame::Window;
    return { frame, options.scale };
}

// The player's windows are those of the desktop here, and they are turned with it or not at all.
bool AsksForTurn(const Options& options)
{
    return !options.headless && options.turn.value_or(Turn::None) != Turn::None;
}

} // namespace

int RunSession(const Options& options)
{
    if (options.examine)
        return Complain("--doctor: looks at Linux machines only", kBadOption);
    if (!options.songs.empty())
        return Complain(options.songs.front() + ": not an option; name a folder with --card", kBadOption);
    if (AsksForTurn(options))
        return Complain("--rotate: turn the screen itself, in the display settings of Windows", kBadOption);
    auto script = ParseInputScript(options.keyScript, ProgramDesktopKeys().commands);
    if (const auto* const error = std::get_if<ScriptError>(&script))
        return Complain("--keys: " + error->message, kBadOption);
    const auto installedTree = FindInstalledTree(ProgramFile());
    if (!installedTree)
        return Complain(ExplainMissingTree(ProgramFile()), kFailed);
    const auto skin = ChooseSkin(options.skin, kernel::Utf16FromUtf8(options.deviceDirectory), *installedTree);
    if (const auto* const error = std::get_if<SkinError>(&skin))
        return Complain(error->message, kBadOption);
    LayOutDevice(options, *installedTree, std::get<std::filesystem::path>(skin));
    screen::SetUpScreen(ScreenFor(options));
    screen::SetDesktopKeys(ProgramDesktopKeys());

    AllowSetForegroundWindow(ASFW_ANY); // a second start lets the running player come to the front
    EndWatch endWatch;
    std::atomic<bool> saved = options.screenshotFile.empty();
    endWatch.Start(options.runForSeconds, [&] { saved = saved || screen::SaveScreenshot(options.screenshotFile); });
    DesktopHands hands;
    ScriptPlayer player(hands);
    player.Start(std::get<std::vector<ScriptStep>>(std::move(script)));

    WString commandLine = options.playerCommandLine;
    const int result = WinMain(kernel::ProgramInstance(), nullptr, commandLine.data(), SW_SHOW);

    player.Stop();
    endWatch.Stop();
    saved = saved || screen::SaveScreenshot(options.screenshotFile);
    if (!saved || !player.AllWritten())
        return Complain("a picture could not be written", kFailed);
    return result;
}

} // namespace cardsong::host
