#include "app/card_scan.h"

#include "app/command_ids.h"
#include "gui/alert_message_window.h"
#include "library/media_scan.h"
#include "playback/media_graph.h"

namespace {

constexpr DWORD kLookAtMessagesMs = 50;
constexpr UINT kFirstRegisteredMessage = 0xC000;

bool g_isScanning;

class ScanInSight {
public:
    ScanInSight() { g_isScanning = true; }
    ~ScanInSight()
    {
        m_box.Close();
        g_isScanning = false;
    }
    ScanInSight(const ScanInSight&) = delete;
    ScanInSight& operator=(const ScanInSight&) = delete;

    // Called at every file; a slow card takes long for each.
    void GoOn()
    {
        const DWORD now = GetTickCount();
        if (!m_hasBox && now - m_startMs >= kScanBoxAfterMs)
            ShowBox();
        if (now - m_lookedMs < kLookAtMessagesMs)
            return;
        AnswerAll(WM_PAINT);
        AnswerAll(WM_TIMER);
        m_lookedMs = GetTickCount();
    }

private:
    void ShowBox()
    {
        m_hasBox = true;
        m_box.Prepare(nullptr, nullptr, nullptr, kAlertProcessing, kAlertInfoSound, kStringScanTitle,
                      kStringScanMessage);
        m_box.Show();
    }

    // A window that paints nothing would ask for ever.
    static void AnswerAll(UINT kind)
    {
        constexpr int kMostAtOnce = 16;
        MSG message;
        for (int i = 0; i < kMostAtOnce && PeekMessageW(&message, nullptr, kind, kind, PM_REMOVE); ++i) {
            if (message.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(message.wParam)); // the main loop's
                return;
            }
            DispatchMessageW(&message);
        }
    }

    const DWORD m_startMs = GetTickCount();
    DWORD m_lookedMs = m_startMs;
    bool m_hasBox = false;
    CAlertMessageWin m_box;
};

bool MayChangeLists(UINT message, WPARAM wParam)
{
    if (message == WM_COMMAND)
        return LOWORD(wParam) != kCommandStop; // a card that is pulled silences the player at once
    return message == WM_NOTIFY || message == WM_CLOSE || message == kGraphEventMessage ||
           message >= kFirstRegisteredMessage;
}

} // namespace

void ScanCard(CPtrListCtrl& list)
{
    ScanInSight scan;
    ScanMediaFolder(kCardFolder, &list, true, [&scan] {
        scan.GoOn();
        return true;
    });
}

bool WaitsForScan(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!g_isScanning || !MayChangeLists(message, wParam))
        return false;
    PostMessageW(window, message, wParam, lParam);
    return true;
}
