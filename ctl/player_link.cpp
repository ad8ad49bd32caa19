#include "ctl/player_link.h"

#include "common/device_messages.h"

namespace {

constexpr DWORD kPatienceMs = 1000;
constexpr DWORD kAskAgainMs = 250; // another asker's answer may have come over ours
constexpr DWORD kLookMs = 5;

HWND FindPlayer()
{
    return FindWindowW(kPlayerWindowClass, nullptr);
}

// The answer to `request`, once it is there.
std::optional<PlayerStatus> AnswerTo(DWORD request)
{
    const auto status = LoadStatus();
    return status && status->request == request ? status : std::nullopt;
}

std::optional<PlayerStatus> AwaitAnswer(DWORD request, DWORD limitMs)
{
    const DWORD begin = GetTickCount();
    do {
        if (auto status = AnswerTo(request))
            return status;
        Sleep(kLookMs);
    } while (GetTickCount() - begin < limitMs);
    return AnswerTo(request);
}

} // namespace

PlayerLink::PlayerLink(const std::string& deviceDirectory)
    : m_deviceDirectory(cardsong::host::DeviceOfPlayer(deviceDirectory.empty() ? cardsong::host::UsualDeviceDirectory()
                                                                               : deviceDirectory)),
      m_visit(m_deviceDirectory)
{
}

bool PlayerLink::IsPlayerThere() const
{
    return FindPlayer() != nullptr;
}

std::string PlayerLink::Finish()
{
    return m_visit.FinishPosting() ? std::string() : "the player cannot be reached: no message bus";
}

std::string PlayerLink::PostCommand(WORD command)
{
    if (!PostMessageW(FindPlayer(), WM_COMMAND, command, 0))
        return "the player has just ended";
    return Finish();
}

std::string PlayerLink::Broadcast(const WCHAR* message, WPARAM wParam)
{
    PostMessageW(HWND_BROADCAST, RegisterWindowMessageW(message), wParam, 0);
    return Finish();
}

std::string PlayerLink::AskStatus(PlayerStatus& status)
{
    const UINT question = RegisterWindowMessageW(kStatusRequestMessage);
    const DWORD request = Random() | 1U;
    for (DWORD waitedMs = 0; waitedMs < kPatienceMs; waitedMs += kAskAgainMs) {
        if (!PostMessageW(FindPlayer(), question, request, 0))
            return "the player has just ended";
        if (std::string trouble = Finish(); !trouble.empty())
            return trouble;
        if (const auto answer = AwaitAnswer(request, kAskAgainMs)) {
            status = *answer;
            return {};
        }
    }
    return "the player does not answer";
}
