#include "gui/alert_message_window.h"

#include "common/string_table.h"
#include "gui/alert_message_window_messages.h"
#include "gui/alert_message_window_thread.h"

#include <utility>

namespace {

constexpr std::size_t kMostTitleUnits = 64;
constexpr std::size_t kMostMessageUnits = 160;

// Several threads may ask; one gets it.
bool Go(AlertLife& life, AlertState from, AlertState to)
{
    return life.state.compare_exchange_strong(from, to);
}

WString TextOrString(LPCWSTR text, HMODULE strings, int id, std::size_t mostUnits)
{
    if (text != nullptr)
        return text;
    return id > 0 ? ReadString(strings, static_cast<UINT>(id)).substr(0, mostUnits) : WString();
}

// A processing box holds up whoever is active on this thread.
HWND DisableActiveWindow()
{
    const HWND active = GetActiveWindow();
    if (active != nullptr)
        EnableWindow(active, FALSE);
    return active;
}

} // namespace

CAlertMessageWin::CAlertMessageWin() : m_life(std::make_shared<AlertLife>()) {}

CAlertMessageWin::~CAlertMessageWin()
{
    Close();
    UnregisterAlertClass();
}

int CAlertMessageWin::Prepare(HWND owner, LPCWSTR title, LPCWSTR message, int kind, int sound, int titleId,
                              int messageId)
{
    if (!Go(*m_life, AlertState::Free, AlertState::Preparing))
        return -1;
    if (owner != nullptr)
        m_owner = owner;
    UniqueModule strings(LoadStringModule());
    m_request.owner = m_owner;
    m_request.title = TextOrString(title, strings.Get(), titleId, kMostTitleUnits);
    m_request.message = TextOrString(message, strings.Get(), messageId, kMostMessageUnits);
    m_request.kind = kind;
    m_request.sound = sound;
    m_request.strings = std::move(strings);
    RegisterAlertClass();
    m_life->state = AlertState::Prepared;
    return 0;
}

HWND CAlertMessageWin::Show()
{
    if (!Go(*m_life, AlertState::Prepared, AlertState::Starting))
        return nullptr;
    AlertRequest request = std::exchange(m_request, {});
    if (AlertLookOf(request.kind).animation != nullptr)
        request.disabled = DisableActiveWindow();
    return ShowOnThread(std::move(request), m_life);
}

int CAlertMessageWin::Close()
{
    if (m_life->state != AlertState::Shown)
        return -1;
    return SendMessageW(m_life->window, WM_CLOSE, 0, 0) == kAlertHasClosed ? 0 : -1;
}
