// Functions of Windows CE's kernel that desktop Windows has under other names.
#include "platform/device_tree.h"
#include "platform/windows/kernel/utf8.h"

#include <random>
#include <vector>

namespace {

constexpr std::size_t kLongestLineUnits = 1024; // the debug output of a device cuts longer ones

} // namespace

BOOL EventModify(HANDLE event, DWORD action)
{
    switch (action) {
    case EVENT_PULSE: return PulseEvent(event);
    case EVENT_RESET: return ResetEvent(event);
    case EVENT_SET: return SetEvent(event);
    default: SetLastError(ERROR_INVALID_PARAMETER); return FALSE;
    }
}

DWORD Random()
{
    static std::random_device s_source;
    return s_source();
}

void NKDbgPrintfW(LPCWSTR format, ...)
{
    if (!cardsong::kernel::CurrentDeviceTree().debugOutput)
        return;
    std::vector<wchar_t> line(kLongestLineUnits + 1);
    va_list arguments;
    va_start(arguments, format);
    _vsnwprintf(line.data(), kLongestLineUnits, format, arguments);
    va_end(arguments);
    OutputDebugStringW(line.data());
    const std::string text = cardsong::kernel::Utf8FromUtf16(line.data());
    std::fwrite(text.data(), 1, text.size(), stderr); // one call, so that threads do not mix within a line
}
