#include "platform/device_path.h"

#include <algorithm>

namespace cardsong::kernel {
namespace {

constexpr bool IsLetter(WCHAR unit)
{
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
}

constexpr bool IsSeparator(WCHAR unit)
{
    return unit == '\\' || unit == '/';
}

constexpr bool IsForeign(WCHAR unit)
{
    return unit < 0x20 || WStringView(TEXT("<>:\"/\\|?*")).find(unit) != WStringView::npos;
}

WStringView WithoutEnd(WStringView name)
{
    return name.substr(0, name.find_last_not_of(TEXT(". ")) + 1);
}

} // namespace

DevicePath DevicePath::Parent() const
{
    DevicePath parent = *this;
    if (!parent.names.empty())
        parent.names.pop_back();
    return parent;
}

DevicePath DevicePath::Trimmed() const
{
    DevicePath trimmed = *this;
    for (WString& name : trimmed.names) {
        const auto units = WithoutEnd(name).size();
        if (units != 0)
            name.resize(units);
    }
    return trimmed;
}

DevicePath ParseDevicePath(WStringView text)
{
    DevicePath path;
    path.names.reserve(static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsSeparator)) + 1);
    while (!text.empty()) {
        const auto end = text.find_first_of(TEXT("\\/"));
        const auto name = text.substr(0, end);
        path.endsInSeparator = end != WStringView::npos;
        text.remove_prefix(path.endsInSeparator ? end + 1 : text.size());
        if (name == TEXT("..")) {
            if (!path.names.empty())
                path.names.pop_back();
        } else if (!name.empty() && name != TEXT(".")) {
            path.names.emplace_back(name);
        }
    }
    return path;
}

bool IsFileName(WStringView name)
{
    return !WithoutEnd(name).empty() && std::none_of(name.begin(), name.end(), IsForeign);
}

bool HasForeignName(const DevicePath& path)
{
    return std::any_of(path.names.begin(), path.names.end(),
                       [](const WString& name) { return std::any_of(name.begin(), name.end(), IsForeign); });
}

bool IsDeviceName(WStringView name)
{
    return name.size() == 5 && IsLetter(name[0]) && IsLetter(name[1]) && IsLetter(name[2]) && name[3] >= '0' &&
           name[3] <= '9' && name[4] == ':';
}

} // namespace cardsong::kernel
