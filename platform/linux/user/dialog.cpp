// Makes a dialog and its controls from a template.
#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/dialog_default_button.h"
#include "platform/linux/user/dialog_tab_order.h"
#include "platform/linux/user/dialog_template.h"
#include "platform/linux/user/dialog_units.h"
#include "platform/linux/user/visible_region.h"

#include <algorithm>

namespace cardsong::user {

namespace {

HFONT MakeFont(const DialogTemplate& source)
{
    if ((source.style & DS_SETFONT) == 0)
        return nullptr;
    const HDC screen = GetDC(nullptr);
    LOGFONTW description{};
    description.lfHeight = -(source.fontPoints * GetDeviceCaps(screen, LOGPIXELSY) / 72);
    ReleaseDC(nullptr, screen);
    const auto units = std::min<std::size_t>(source.fontName.size(), LF_FACESIZE - 1);
    std::copy_n(source.fontName.data(), units, description.lfFaceName);
    return CreateFontIndirectW(&description);
}

HWND MakeWindow(const DialogTemplate& source, HINSTANCE instance, HWND parent)
{
    POINT at{ PixelsAcross(source.units.left), PixelsDown(source.units.top) };
    if ((source.style & WS_CHILD) == 0 && parent != nullptr)
        ClientToScreen(parent, &at);
    const auto& name = source.className;
    return CreateWindowExW(source.exStyle, name.empty() ? kDialogClassName : name.c_str(), source.text.c_str(),
                           source.style & ~WS_VISIBLE, at.x, at.y, PixelsAcross(source.units.right),
                           PixelsDown(source.units.bottom), parent, nullptr, instance, nullptr);
}

bool BecomeDialog(HWND window, HFONT font, DLGPROC procedure)
{
    {
        LockedDesktop desktop;
        WindowRecord* const record = desktop->windows.Find(window);
        if (record == nullptr)
            return false;
        record->dialog = std::make_unique<DialogState>();
        record->dialog->font = font;
    }
    if (procedure != nullptr)
        SetWindowLongPtrW(window, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(procedure));
    return true;
}

bool MakeControl(HWND dialog, const ControlTemplate& source, HINSTANCE instance, HFONT font)
{
    // Creation data is handed over as the template holds it: with its size, which does not count itself, in front.
    std::vector<std::byte> data(sizeof(WORD) + source.creationData.size());
    const auto sizeBytes = static_cast<WORD>(source.creationData.size());
    data[0] = static_cast<std::byte>(sizeBytes & 0xFF);
    data[1] = static_cast<std::byte>(sizeBytes >> 8);
    std::copy(source.creationData.begin(), source.creationData.end(), data.begin() + sizeof(WORD));
    const HWND control = CreateWindowExW(
        source.exStyle, source.className.c_str(), source.text.c_str(), source.style | WS_CHILD,
        PixelsAcross(source.units.left), PixelsDown(source.units.top), PixelsAcross(source.units.right),
        PixelsDown(source.units.bottom), dialog, reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(source.id)), instance,
        source.creationData.empty() ? nullptr : data.data());
    if (control == nullptr)
        return false;
    if (font != nullptr)
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    if (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON)
        SetDefaultId(dialog, source.id);
    return true;
}

HWND FirstToFocus(HWND dialog)
{
    const HWND stop = NextTabStop(dialog, nullptr, Direction::Forward);
    return stop != nullptr ? stop : NextInGroup(dialog, nullptr, Direction::Forward);
}

void Initialise(HWND dialog, DWORD style, LPARAM parameter)
{
    const auto proposed = reinterpret_cast<WPARAM>(FirstToFocus(dialog));
    const bool wantsFocus = SendMessageW(dialog, WM_INITDIALOG, proposed, parameter) != 0;
    const bool takesFocus = (style & DS_CONTROL) == 0 || (style & WS_VISIBLE) != 0;
    if (!wantsFocus || !takesFocus || IsWindow(dialog) == FALSE)
        return;
    const HWND first = FirstToFocus(dialog); // the program may have changed the order
    if (first != nullptr)
        SetFocus(first);
    else if ((style & DS_CONTROL) == 0)
        SetFocus(dialog);
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

HWND CreateDialogIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW dialogTemplate, HWND parent, DLGPROC procedure,
                                LPARAM parameter)
{
    const auto source = dialogTemplate == nullptr ? std::nullopt : ReadDialogTemplate(dialogTemplate);
    if (!source.has_value()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const HWND dialog = MakeWindow(*source, instance, parent);
    if (dialog == nullptr)
        return nullptr;
    const HFONT font = MakeFont(*source);
    if (!BecomeDialog(dialog, font, procedure))
        return nullptr;
    if (font != nullptr)
        SendMessageW(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    for (const auto& control : source->controls)
        if (!MakeControl(dialog, control, instance, font)) {
            DestroyWindow(dialog);
            return nullptr;
        }
    if (procedure != nullptr)
        Initialise(dialog, source->style, parameter);
    if (IsWindow(dialog) == FALSE)
        return nullptr;
    if (source->style & WS_VISIBLE)
        ShowWindow(dialog, SW_SHOWNORMAL);
    return dialog;
}
