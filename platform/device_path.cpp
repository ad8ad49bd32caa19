#include "platform/device_path.h"

namespace cardsong::kernel {
namespace {

constexpr bool IsLetter(WCHAR unit)
{
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
}

} // namespace

DevicePath DevicePath::Parent() const
{
    DevicePath parent = *this;
    if (!parent.names.empty())
        parent.names.pop_back();
    return parent;
}

DevicePath ParseDevicePath(WStringView text)
{
    DevicePath path;
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

bool IsDeviceName(WStringView name)
{
    return name.size() == 5 && IsLetter(name[0]) && IsLetter(name[1]) && IsLetter(name[2]) && name[3] >= '0' &&
           name[3] <= '9' && name[4] == ':';
}

} // namespace cardsong::kernel
