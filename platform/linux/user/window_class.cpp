#include "platform/linux/user/window_class.h"

#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/desktop.h"

#include <algorithm>
#include <limits>

namespace cardsong::user {

namespace {

constexpr int kControlExtraBytes = 16; // state, font: see button.cpp and static_control.cpp
constexpr int kMaxExtraBytes = 4096;
constexpr int kResourceGroupIcon = 14;

bool IsAtom(LPCWSTR name)
{
    return reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF;
}

WindowClass SystemClass(const WCHAR* name, UINT style, WNDPROC procedure, int extraBytes)
{
    WindowClass windowClass;
    windowClass.name = name;
    windowClass.style = style;
    windowClass.procedure = procedure;
    windowClass.extraBytes = extraBytes;
    windowClass.isOfSystem = true;
    return windowClass;
}

} // namespace

std::u16string FoldName(std::u16string_view name)
{
    std::u16string folded(name);
    if (folded.size() <= std::numeric_limits<DWORD>::max())
        CharLowerBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    return folded;
}

ClassTable::ClassTable()
{
    Add(SystemClass(u"Button", CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ButtonProcedure, kControlExtraBytes));
    Add(SystemClass(u"Static", CS_DBLCLKS, StaticProcedure, kControlExtraBytes));
    Add(SystemClass(kDialogClassName, CS_DBLCLKS, DialogClassProcedure, DLGWINDOWEXTRA));
}

std::shared_ptr<WindowClass> ClassTable::Find(LPCWSTR nameOrAtom) const
{
    if (IsAtom(nameOrAtom)) {
        const auto atom = static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(nameOrAtom));
        for (const auto& [folded, windowClass] : m_classes)
            if (atom != 0 && windowClass->atom == atom)
                return windowClass;
        return nullptr;
    }
    const auto found = m_classes.find(FoldName(nameOrAtom));
    return found == m_classes.end() ? nullptr : found->second;
}

std::shared_ptr<WindowClass> ClassTable::Add(WindowClass windowClass)
{
    const auto folded = FoldName(windowClass.name);
    if (m_classes.contains(folded))
        return nullptr;
    windowClass.atom = FreeAtom();
    if (windowClass.atom == 0)
        return nullptr;
    const auto added = std::make_shared<WindowClass>(std::move(windowClass));
    m_classes.emplace(folded, added);
    return added;
}

// The next one that no class has: numbers of classes that went are given again once all have been used.
ATOM ClassTable::FreeAtom()
{
    const auto isTaken = [this](ATOM atom) {
        return std::ranges::any_of(m_classes, [atom](const auto& known) { return known.second->atom == atom; });
    };
    for (unsigned tried = 0; tried <= kLastAtom - kFirstAtom; ++tried) {
        const ATOM atom = m_nextAtom;
        m_nextAtom = atom == kLastAtom ? kFirstAtom : static_cast<ATOM>(atom + 1);
        if (!isTaken(atom))
            return atom;
    }
    return 0;
}

void ClassTable::Remove(const WindowClass& windowClass)
{
    m_classes.erase(FoldName(windowClass.name));
}

} // namespace cardsong::user

using namespace cardsong::user;

ATOM RegisterClassW(const WNDCLASSW* windowClass)
{
    if (windowClass == nullptr || IsAtom(windowClass->lpszClassName) || windowClass->lpfnWndProc == nullptr ||
        windowClass->cbWndExtra < 0 || windowClass->cbWndExtra > kMaxExtraBytes || windowClass->cbClsExtra < 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    WindowClass added;
    added.name = windowClass->lpszClassName;
    added.style = windowClass->style;
    added.procedure = windowClass->lpfnWndProc;
    added.extraBytes = windowClass->cbWndExtra;
    added.background = windowClass->hbrBackground;
    LockedDesktop desktop;
    const auto result = desktop->classes.Add(std::move(added));
    if (result == nullptr)
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
    return result == nullptr ? ATOM{ 0 } : result->atom;
}

BOOL UnregisterClassW(LPCWSTR name, HINSTANCE)
{
    LockedDesktop desktop;
    const auto windowClass = desktop->classes.Find(name);
    if (windowClass == nullptr || windowClass->isOfSystem) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    if (windowClass->windowCount > 0) {
        SetLastError(ERROR_CLASS_HAS_WINDOWS);
        return FALSE;
    }
    desktop->classes.Remove(*windowClass);
    return TRUE;
}

// The icon is only ever named, never drawn: its place among the resources is handle enough.
HICON LoadIconW(HINSTANCE instance, LPCWSTR name)
{
    return reinterpret_cast<HICON>(FindResourceW(instance, name, MAKEINTRESOURCEW(kResourceGroupIcon)));
}
