// The face that a device's texts have: one that writes Latin and Chinese alike, as titles of songs mix them.
#include "platform/windows/screen/window_calls.h"

#include "platform/device_tree.h"
#include "platform/windows/screen/device_screen.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cardsong::device {
namespace {

constexpr LANGID kChineseTraditional = 0x0404;

using Faces = std::array<const wchar_t*, 4>; // the best first; desktops in every language have one of them
constexpr Faces kTraditionalFaces = { L"Microsoft JhengHei UI", L"Microsoft JhengHei", L"WenQuanYi Micro Hei",
                                      L"Noto Sans CJK TC" };
constexpr Faces kOtherFaces = { L"Microsoft YaHei UI", L"Microsoft YaHei", L"WenQuanYi Micro Hei",
                                L"Noto Sans CJK SC" };

int CALLBACK TakeNote(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM isThere)
{
    *reinterpret_cast<bool*>(isThere) = true;
    return 0;
}

bool IsInstalled(const wchar_t* face)
{
    LOGFONTW wish{};
    wish.lfCharSet = DEFAULT_CHARSET;
    std::wstring_view(face).copy(wish.lfFaceName, LF_FACESIZE - 1);
    bool isThere = false;
    const HDC context = ::GetDC(nullptr);
    EnumFontFamiliesExW(context, &wish, TakeNote, reinterpret_cast<LPARAM>(&isThere), 0);
    ReleaseDC(nullptr, context);
    return isThere;
}

const wchar_t* FirstInstalled(const Faces& faces)
{
    const auto* const found = std::ranges::find_if(faces, IsInstalled);
    return found != faces.end() ? *found : L"";
}

const wchar_t* DeviceFace()
{
    if (kernel::CurrentDeviceTree().uiLanguage == kChineseTraditional) {
        static const wchar_t* const s_face = FirstInstalled(kTraditionalFaces);
        return s_face;
    }
    static const wchar_t* const s_face = FirstInstalled(kOtherFaces);
    return s_face;
}

} // namespace

HFONT CreateFontIndirectW(const LOGFONTW* description)
{
    if (!screen::IsSetUp() || description == nullptr || description->lfFaceName[0] != L'\0')
        return ::CreateFontIndirectW(description);
    LOGFONTW named = *description;
    std::wstring_view(DeviceFace()).copy(named.lfFaceName, LF_FACESIZE - 1);
    named.lfCharSet = DEFAULT_CHARSET;
    named.lfQuality = ANTIALIASED_QUALITY; // a small screen's pixels are no stripes of three colours
    return ::CreateFontIndirectW(&named);
}

} // namespace cardsong::device
