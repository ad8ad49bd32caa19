// Message numbers by name, the same for everybody who asks.
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/desktop.h"

using namespace cardsong::user;

UINT RegisterWindowMessageW(LPCWSTR name)
{
    constexpr UINT kFirst = 0xC000;
    constexpr UINT kLast = 0xFFFF;
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
    const auto next = kFirst + static_cast<UINT>(known.size());
    if (!known.contains(folded) && next > kLast) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    return known.try_emplace(folded, next).first->second;
}
