#include "app/no_card_notice.h"

#include "app/command_ids.h"
#include "common/kernel_handles.h"
#include "common/string_table.h"
#include "gui/alert_message_window.h"
#include "platform/ce.h"

#include <cstdio>
#include <string>

namespace {

constexpr DWORD kLookAgainMs = 100;
constexpr std::size_t kMostUnits = 99; // of each text

std::string ToUtf8(const WString& text)
{
    const int units = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0'); // a UTF-16 unit takes at most three bytes of UTF-8
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), units, bytes.data(),
                                           static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return bytes;
}

WString ReadNotice(const UniqueModule& strings, int id)
{
    return ReadString(strings.Get(), static_cast<UINT>(id)).substr(0, kMostUnits);
}

} // namespace

void TellThatNoCardIsThere()
{
    const UniqueModule strings(LoadStringModule());
    const WString title = ReadNotice(strings, kStringNoCardTitle);
    const WString message = ReadNotice(strings, kStringNoCardMessage);
    std::fprintf(stderr, "%s: %s\n", ToUtf8(title).c_str(), ToUtf8(message).c_str());
    CAlertMessageWin alert;
    alert.Prepare(nullptr, title.c_str(), message.c_str(), kAlertError, kAlertInfoSound, 0, 0);
    const HWND window = alert.Show();
    while (IsWindow(window))
        Sleep(kLookAgainMs);
}
