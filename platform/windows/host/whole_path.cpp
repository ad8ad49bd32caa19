#include "platform/windows/host/whole_path.h"

#include "platform/windows/kernel/utf8.h"

#include <filesystem>

namespace cardsong::host {

std::string WholePath(const std::string& path)
{
    std::error_code error;
    const auto whole = std::filesystem::absolute(kernel::Utf16FromUtf8(path), error);
    return error ? path : kernel::Utf8FromUtf16(std::filesystem::path(whole).make_preferred().wstring());
}

} // namespace cardsong::host
