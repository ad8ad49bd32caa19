// An alert: a full-screen pop-up with a title, a message and up to two buttons, or a small box that shows that
// something is being done. Its window lives on a thread of its own, so that its owner may go on working or do nothing.
// Knows no text of the program.
#pragma once

#include "gui/alert_kinds.h"
#include "gui/alert_request.h"
#include "platform/ce.h"

#include <memory>

// One alert at a time; used again when it has closed. Any thread may call any operation.
class CAlertMessageWin {
public:
    CAlertMessageWin();
    // An alert that is still shown is closed.
    ~CAlertMessageWin();
    CAlertMessageWin(const CAlertMessageWin&) = delete;
    CAlertMessageWin& operator=(const CAlertMessageWin&) = delete;

    // Says what the alert will show. `owner` hears the answer; null: the owner of the alert before. `title` and
    // `message`: copied, of any length; null: the string of that id, of which at most 64 and 160 units are taken, and
    // nothing for an id of 0 or less. `kind`, `sound`: AlertKind, AlertSound. Returns 0; -1, and changes nothing,
    // unless the object is free.
    int Prepare(HWND owner, LPCWSTR title, LPCWSTR message, int kind, int sound, int titleId, int messageId);
    // Returns when the window is shown: the window, or null when nothing is prepared or the system refuses. A
    // processing box disables the caller's active window until it closes, and needs the caller's thread to look at its
    // messages then.
    //
    // A button closes the window and then sends WM_COMMAND (its id, the window) to the owner. So does the end of an
    // error alert's time, with kAlertOkId.
    HWND Show();
    // Closes the window, and says nothing to the owner. Returns 0 when all is closed; -1 when nothing was shown.
    int Close();

    AlertState State() const { return m_life->state; }

private:
    HWND m_owner = nullptr;
    AlertRequest m_request;
    std::shared_ptr<AlertLife> m_life;
};
