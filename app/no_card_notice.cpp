#include "app/no_card_notice.h"

#include "app/command_ids.h"
#include "common/string_table.h"
#include "platform/ce.h"

#include <cstdio>
#include <string>

namespace {

std::string ReadAsUtf8(HMODULE strings, UINT id)
{
    const WString text = ReadString(strings, id);
    const int units = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(units) * 3, '\0'); // a UTF-16 unit takes at most three bytes of UTF-8
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), units, bytes.data(),
                                           static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return bytes;
}

} // namespace

void TellThatNoCardIsThere()
{
    const HMODULE strings = LoadStringModule();
    const std::string title = ReadAsUtf8(strings, kStringNoCardTitle);
    const std::string message = ReadAsUtf8(strings, kStringNoCardMessage);
    FreeLibrary(strings);
    std::fprintf(stderr, "%s: %s\n", title.c_str(), message.c_str());
}
