#include "gui/message_box.h"

#include <cstdarg>

int ShowMessageBox(HWND owner, LPCWSTR format, ...)
{
    WCHAR text[kMessageTextUnits] = {};
    va_list arguments;
    va_start(arguments, format);
    _vsnwprintf(text, kMessageTextUnits - 1, format, arguments); // a text that was cut has no zero of its own
    va_end(arguments);
    text[kMessageTextUnits - 1] = 0;
    return MessageBoxW(owner, text, TEXT("GUI"), MB_OK | MB_ICONEXCLAMATION);
}
