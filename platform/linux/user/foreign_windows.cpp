#include "platform/linux/user/foreign_windows.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/ce/messages.h"
#include "platform/linux/user/registered_messages.h"

#include <algorithm>

namespace cardsong::user {

namespace {

constexpr ULONG_PTR kForeignBit = 0x80000000; // the generation in a handle of our own never reaches it

HWND HandleOf(std::size_t number)
{
    return reinterpret_cast<HWND>(kForeignBit | ((static_cast<ULONG_PTR>(number) + 1) << 1));
}

// The class of the window behind the handle; empty for every other handle.
std::u16string ClassOf(const Desktop& desktop, HWND window)
{
    const auto value = reinterpret_cast<ULONG_PTR>(window);
    const auto number = (value & ~kForeignBit) >> 1;
    if (number == 0 || number > desktop.foreignClasses.size() || HandleOf(number - 1) != window)
        return {};
    return desktop.foreignClasses[number - 1];
}

HWND HandleForClass(Desktop& desktop, const std::u16string& className)
{
    auto& classes = desktop.foreignClasses;
    const auto known = std::find(classes.begin(), classes.end(), className);
    const auto number = static_cast<std::size_t>(known - classes.begin());
    if (known == classes.end())
        classes.push_back(className);
    return HandleOf(number);
}

// Who may be asked about the window; null for handles that are no foreign window's.
std::shared_ptr<OtherPrograms> ProgramsWith(HWND window, std::u16string& className)
{
    LockedDesktop desktop;
    className = ClassOf(*desktop, window);
    return className.empty() ? nullptr : desktop->otherPrograms;
}

bool IsAtom(LPCWSTR className)
{
    return reinterpret_cast<ULONG_PTR>(className) <= 0xFFFF;
}

} // namespace

HWND FindForeignWindow(LPCWSTR className)
{
    std::shared_ptr<OtherPrograms> programs;
    {
        LockedDesktop desktop;
        programs = desktop->otherPrograms;
    }
    if (programs == nullptr || IsAtom(className))
        return nullptr;
    const std::u16string folded = FoldName(className);
    if (folded.empty() || !programs->HaveWindow(folded))
        return nullptr;
    LockedDesktop desktop;
    return HandleForClass(*desktop, folded);
}

bool IsForeignWindow(HWND window)
{
    std::u16string className;
    const auto programs = ProgramsWith(window, className);
    return programs != nullptr && programs->HaveWindow(className);
}

bool PostToForeignWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    CrossingMessage crossing;
    const auto programs = ProgramsWith(window, crossing.windowClass);
    if (programs == nullptr || !programs->HaveWindow(crossing.windowClass)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    const auto name = NameOfMessage(*LockedDesktop(), message);
    if (!name && (message != WM_COMMAND || lParam != 0)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    }
    crossing.name = name.value_or(std::u16string());
    crossing.wParam = wParam;
    crossing.lParam = lParam;
    programs->Send(std::move(crossing));
    return true;
}

void BroadcastToOtherPrograms(UINT message, WPARAM wParam, LPARAM lParam)
{
    std::shared_ptr<OtherPrograms> programs;
    std::optional<std::u16string> name;
    {
        LockedDesktop desktop;
        programs = desktop->otherPrograms;
        name = NameOfMessage(*desktop, message);
    }
    if (programs != nullptr && name)
        programs->Send({ {}, *std::move(name), wParam, lParam });
}

} // namespace cardsong::user
