// The system's message box: a dialog of its own with a loop of its own. Every answer comes from a button.
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/input.h"
#include "platform/linux/user/message_box_look.h"
#include "platform/linux/user/window_class.h"

#include <cstring>
#include <span>
#include <vector>

namespace cardsong::user {

namespace {

struct Choice {
    int id;
    LPCWSTR english;
    LPCWSTR simplified;
    LPCWSTR traditional;
};
constexpr Choice kOk = { IDOK, u"OK", u"确定", u"確定" };
constexpr Choice kCancel = { IDCANCEL, u"Cancel", u"取消", u"取消" };
constexpr Choice kYes = { IDYES, u"Yes", u"是", u"是" };
constexpr Choice kNo = { IDNO, u"No", u"否", u"否" };
constexpr Choice kError = { 0, u"Error", u"错误", u"錯誤" }; // the caption of a box without one

constexpr Choice kOkOnly[] = { kOk };
constexpr Choice kOkCancel[] = { kOk, kCancel };
constexpr Choice kYesNo[] = { kYes, kNo };

constexpr UINT kButtonsMask = 0x0F;
constexpr UINT kIconMask = 0xF0;
constexpr UINT kDefaultMask = 0xF00;

// The last of a row is what Escape means, except that a question with Yes and No wants one of them.
std::span<const Choice> ChoicesOf(UINT type)
{
    switch (type & kButtonsMask) {
    case MB_OK: return kOkOnly;
    case MB_OKCANCEL: return kOkCancel;
    case MB_YESNO: return kYesNo;
    default: return {};
    }
}

LPCWSTR Caption(const Choice& choice)
{
    switch (GetUserDefaultUILanguage()) {
    case 0x0804: return choice.simplified;
    case 0x0404: return choice.traditional;
    default: return choice.english;
    }
}

struct Box {
    std::span<const Choice> choices;
    std::u16string caption;
    MessageBoxLayout plan;
    HFONT font = nullptr;
    std::size_t firstFocus = 0;
    int answer = 0;
    bool isExitAsked = false;

    int EscapeAnswer() const { return choices.back().id; }
};

Box* BoxOf(HWND dialog)
{
    return reinterpret_cast<Box*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
}

void MakeButtons(HWND dialog, const Box& box)
{
    for (std::size_t i = 0; i < box.choices.size(); ++i) {
        const RECT& place = box.plan.buttons[i];
        const DWORD group = i == 0 ? WS_GROUP : 0;
        const auto id = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(box.choices[i].id));
        CreateWindowExW(0, u"button", nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP | group | BS_OWNERDRAW, place.left,
                        place.top, place.right - place.left, place.bottom - place.top, dialog, id, nullptr, nullptr);
    }
    SetFocus(GetDlgItem(dialog, box.choices[box.firstFocus].id));
}

void Paint(HWND dialog, const Box& box)
{
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(dialog, &paint);
    DrawMessageBox(context, box.plan, box.caption, box.font);
    EndPaint(dialog, &paint);
}

void DrawButton(const Box& box, const DRAWITEMSTRUCT& request)
{
    ButtonFace face = (request.itemState & ODS_FOCUS) != 0 ? ButtonFace::Focused : ButtonFace::Normal;
    if ((request.itemState & ODS_SELECTED) != 0)
        face = ButtonFace::Pressed;
    for (const Choice& choice : box.choices)
        if (static_cast<UINT>(choice.id) == request.CtlID)
            DrawMessageBoxButton(request.hDC, request.rcItem, Caption(choice), face, box.font);
}

void Choose(Box& box, int id)
{
    for (const Choice& choice : box.choices)
        if (choice.id == id)
            box.answer = id;
    if (id == IDCANCEL && box.choices.size() == 1)
        box.answer = box.EscapeAnswer();
}

INT_PTR Answer(HWND dialog, LRESULT result)
{
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
    return TRUE;
}

INT_PTR CALLBACK BoxProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        MakeButtons(dialog, *BoxOf(dialog));
        return FALSE;
    }
    Box* const box = BoxOf(dialog);
    if (box == nullptr)
        return FALSE;
    switch (message) {
    case WM_ERASEBKGND: return Answer(dialog, 1); // the paint covers everything
    case WM_PAINT: Paint(dialog, *box); return TRUE;
    case WM_DRAWITEM: DrawButton(*box, *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case WM_COMMAND: Choose(*box, LOWORD(wParam)); return TRUE;
    case DM_GETDEFID: return Answer(dialog, MAKELONG(static_cast<WORD>(GetDlgCtrlID(GetFocus())), DC_HASDEFID));
    default: return FALSE;
    }
}

// A dialog without controls; its title is for those who look for it.
std::vector<WORD> TemplateOf(const Box& box)
{
    DLGTEMPLATE head{};
    head.style = WS_POPUP | WS_CLIPCHILDREN;
    std::vector<WORD> words(sizeof head / sizeof(WORD) + 2); // and no names of a menu and a class
    std::memcpy(words.data(), &head, sizeof head);
    words.insert(words.end(), box.caption.begin(), box.caption.end());
    words.push_back(0);
    return words;
}

HWND ShowBox(HWND owner, Box& box)
{
    const std::vector<WORD> source = TemplateOf(box);
    const HWND dialog = CreateDialogIndirectParamW(nullptr, reinterpret_cast<LPCDLGTEMPLATEW>(source.data()), owner,
                                                   BoxProcedure, reinterpret_cast<LPARAM>(&box));
    if (dialog == nullptr)
        return nullptr;
    const RECT& place = box.plan.box;
    SetWindowPos(dialog, HWND_TOP, place.left, place.top, place.right - place.left, place.bottom - place.top, 0);
    ShowWindow(dialog, SW_SHOW);
    SetFocus(GetDlgItem(dialog, box.choices[box.firstFocus].id));
    return dialog;
}

// Until a button is chosen, the box goes, or the thread is told to quit, which then its own loop hears of.
void RunBox(HWND dialog, Box& box)
{
    MSG message{};
    while (box.answer == 0 && IsWindow(dialog) != FALSE) {
        if (GetMessageW(&message, nullptr, 0, 0) == FALSE) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (message.message == WM_KEYDOWN && message.wParam == VK_F24) {
            box.answer = box.EscapeAnswer();
            box.isExitAsked = true;
        } else if (IsDialogMessageW(dialog, &message) == FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

HWND TopLevel(HWND window)
{
    while (window != nullptr && (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) != 0)
        window = GetParent(window);
    return window;
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    if (owner != nullptr && IsWindow(owner) == FALSE) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    Box box;
    box.choices = ChoicesOf(type);
    if (box.choices.empty()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    box.caption = caption == nullptr ? Caption(kError) : caption;
    box.font = MakeMessageFont();
    if ((type & kDefaultMask) == MB_DEFBUTTON2 && box.choices.size() > 1)
        box.firstFocus = 1;
    box.plan = PlanMessageBox(
        { text == nullptr ? u"" : text, box.caption, (type & kIconMask) != 0, static_cast<int>(box.choices.size()) },
        box.font);
    owner = TopLevel(owner);
    const HWND dialog = ShowBox(owner, box);
    if (dialog != nullptr) {
        const bool wasEnabled = owner != nullptr && IsWindowEnabled(owner) != FALSE;
        if (wasEnabled)
            EnableWindow(owner, FALSE);
        RunBox(dialog, box);
        if (wasEnabled)
            EnableWindow(owner, TRUE); // before the box goes, so that the owner becomes the active window
        DestroyWindow(dialog);
    }
    DeleteObject(box.font);
    if (box.isExitAsked)
        PressExitKey(); // it is meant for whoever comes next
    return box.answer;
}
