// Window classes by name. Knows no window, only how many windows each class has.
#pragma once

#include "platform/linux/ce/user.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace cardsong::user {

struct WindowClass {
    std::u16string name; // as registered
    UINT style = 0;
    WNDPROC procedure = nullptr;
    int extraBytes = 0;
    HBRUSH background = nullptr;
    ATOM atom = 0;
    int windowCount = 0;
    bool isOfSystem = false; // no program can take it away
};

// All functions are called with the desktop locked.
class ClassTable {
public:
    ClassTable();
    // By name, letters compared without case, or by an atom in place of the name. Null when there is none.
    std::shared_ptr<WindowClass> Find(LPCWSTR nameOrAtom) const;
    // Null when the name is taken, or every atom is.
    std::shared_ptr<WindowClass> Add(WindowClass windowClass);
    void Remove(const WindowClass& windowClass);

private:
    static constexpr ATOM kFirstAtom = 0xC000;
    static constexpr ATOM kLastAtom = 0xFFFF;

    ATOM FreeAtom(); // 0 when all are taken

    std::unordered_map<std::u16string, std::shared_ptr<WindowClass>> m_classes; // by folded name
    ATOM m_nextAtom = kFirstAtom;
};

// Small letters for capital ones, as class and message names are compared.
std::u16string FoldName(std::u16string_view name);

// Class names and procedures that the system itself brings.
inline constexpr const WCHAR* kDialogClassName = u"#32770";
LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK DialogClassProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace cardsong::user
