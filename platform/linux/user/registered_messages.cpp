// Message numbers by name, the same for everybody who asks.
#include "platform/linux/user/registered_messages.h"

#include "platform/linux/ce/kernel.h"

namespace cardsong::user {
namespace {

constexpr UINT kFirst = 0xC000;
constexpr UINT kLast = 0xFFFF;

} // namespace

std::optional<std::u16string> NameOfMessage(const Desktop& desktop, UINT number)
{
    if (number < kFirst || number - kFirst >= desktop.messageNames.size())
        return std::nullopt;
    return desktop.messageNames[number - kFirst];
}

UINT NumberOfMessage(const Desktop& desktop, std::u16string_view name)
{
    const auto found = desktop.registeredMessages.find(FoldName(name));
    return found == desktop.registeredMessages.end() ? 0 : found->second;
}

} // namespace cardsong::user

using namespace cardsong::user;

UINT RegisterWindowMessageW(LPCWSTR name)
{
    constexpr std::size_t kMaxNameUnits = 255;
    if (name == nullptr || std::u16string_view(name).size() > kMaxNameUnits) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (name[0] == 0) {
        SetLastError(ERROR_INVALID_NAME);
        return 0;
    }
    const auto folded = FoldName(name);
    LockedDesktop desktop;
    auto& known = desktop->registeredMessages;
    if (const auto found = known.find(folded); found != known.end())
        return found->second;
    const auto next = kFirst + static_cast<UINT>(known.size());
    if (next > kLast) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    desktop->messageNames.emplace_back(name);
    known.emplace(folded, next);
    return next;
}
