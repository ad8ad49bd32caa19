// The API's conversions between code pages and UTF-16, and its lower case.
#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/code_pages.h"
#include "platform/linux/kernel/unicode.h"

#include <algorithm>
#include <cstring>

using namespace cardsong::kernel;

namespace {

int Fail(DWORD error)
{
    SetLastError(error);
    return 0;
}

UINT Resolve(UINT codePage)
{
    return codePage == CP_ACP ? AnsiCodePage() : codePage;
}

// Copies what fits; the count when all fits or only the count was asked for.
template <typename Text, typename Unit>
int Deliver(const Text& text, Unit* target, int capacity)
{
    if (capacity == 0)
        return static_cast<int>(text.size());
    const auto room = static_cast<std::size_t>(capacity);
    std::copy_n(text.data(), std::min(text.size(), room), target);
    if (text.size() > room)
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    return static_cast<int>(text.size());
}

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR source, int sourceBytes, LPWSTR target, int targetUnits)
{
    codePage = Resolve(codePage);
    if (!source || sourceBytes == 0 || targetUnits < 0 || (!target && targetUnits != 0) || !IsKnownCodePage(codePage))
        return Fail(ERROR_INVALID_PARAMETER);
    // A negative length: the text ends at its zero, which is converted too.
    const auto length = sourceBytes < 0 ? std::strlen(source) + 1 : static_cast<std::size_t>(sourceBytes);
    bool isClean = true;
    const auto text = DecodeText(codePage, { source, length }, isClean);
    if (!isClean && (flags & MB_ERR_INVALID_CHARS) != 0)
        return Fail(ERROR_NO_UNICODE_TRANSLATION);
    return Deliver(text, target, targetUnits);
}

int WideCharToMultiByte(UINT codePage, DWORD, LPCWSTR source, int sourceUnits, LPSTR target, int targetBytes,
                        LPCSTR defaultChar, BOOL* usedDefault)
{
    codePage = Resolve(codePage);
    if (!source || sourceUnits == 0 || targetBytes < 0 || (!target && targetBytes != 0) || !IsKnownCodePage(codePage))
        return Fail(ERROR_INVALID_PARAMETER);
    const auto length = sourceUnits < 0 ? wcslen(source) + 1 : static_cast<std::size_t>(sourceUnits);
    bool isClean = true;
    const auto bytes = EncodeText(codePage, { source, length }, defaultChar ? defaultChar : "?", isClean);
    if (usedDefault)
        *usedDefault = isClean ? FALSE : TRUE;
    return Deliver(bytes, target, targetBytes);
}

DWORD CharLowerBuffW(LPWSTR text, DWORD units)
{
    if (!text)
        return 0;
    std::transform(text, text + units, text, ToLowerUnit);
    return units;
}
