// Formatting into the caller's buffer, by the API's rules and by those of the C runtime.
#include "platform/linux/kernel/text_format.h"

#include "platform/linux/ce/kernel.h"

#include <algorithm>

using cardsong::kernel::FormatText;

int wsprintfW(LPWSTR buffer, LPCWSTR format, ...)
{
    constexpr std::size_t kMaxUnits = 1024; // with the zero, whatever the buffer
    va_list arguments;
    va_start(arguments, format);
    auto text = FormatText(format, arguments);
    va_end(arguments);
    text.resize(std::min(text.size(), kMaxUnits - 1));
    std::copy_n(text.c_str(), text.size() + 1, buffer);
    return static_cast<int>(text.size());
}

int _vsnwprintf(WCHAR* buffer, std::size_t units, const WCHAR* format, va_list arguments)
{
    const auto text = FormatText(format, arguments);
    if (!buffer && units == 0)
        return static_cast<int>(text.size()); // the length is all that was asked for
    std::copy_n(text.data(), std::min(text.size(), units), buffer);
    if (text.size() > units)
        return -1;
    if (text.size() < units)
        buffer[text.size()] = u'\0';
    return static_cast<int>(text.size());
}
