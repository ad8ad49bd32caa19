// The debug output: standard error, when the host wants it.
#include "platform/device_tree.h"
#include "platform/linux/kernel/text_format.h"
#include "platform/linux/kernel/unicode.h"

#include "platform/linux/ce/kernel.h"

void NKDbgPrintfW(LPCWSTR format, ...)
{
    using namespace cardsong::kernel;
    if (!CurrentDeviceTree().debugOutput)
        return;
    va_list arguments;
    va_start(arguments, format);
    const auto text = ToUtf8(FormatText(format, arguments));
    va_end(arguments);
    std::fwrite(text.data(), 1, text.size(), stderr); // one call, so that threads do not mix within a line
}
