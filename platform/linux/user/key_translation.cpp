// Which character a key stroke is.
#include "platform/linux/ce/user.h"

namespace cardsong::user {

namespace {

struct PlainKey {
    WPARAM key;
    WCHAR character;
};
constexpr PlainKey kPlainKeys[] = {
    { VK_TAB, u'\t' }, { VK_RETURN, u'\r' }, { VK_ESCAPE, u'\x1B' }, { VK_SPACE, u' ' }, { 8, u'\b' }
};

WCHAR CharacterOf(WPARAM key, bool isShifted)
{
    for (const PlainKey& plain : kPlainKeys)
        if (plain.key == key)
            return plain.character;
    if (key >= u'0' && key <= u'9')
        return static_cast<WCHAR>(key);
    if (key >= u'A' && key <= u'Z')
        return static_cast<WCHAR>(isShifted ? key : key - u'A' + u'a');
    return 0;
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

BOOL TranslateMessage(const MSG* message)
{
    if (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN)
        return message->message == WM_KEYUP || message->message == WM_SYSKEYUP ? TRUE : FALSE;
    const WCHAR character = CharacterOf(message->wParam, GetKeyState(static_cast<int>(VK_SHIFT)) < 0);
    const UINT charMessage = message->message == WM_KEYDOWN ? WM_CHAR : WM_SYSCHAR;
    if (character != 0)
        PostMessageW(message->hwnd, charMessage, character, message->lParam);
    return TRUE;
}
