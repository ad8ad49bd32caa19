#include "platform/linux/user/dialog_template.h"

#include <cstddef>
#include <cstring>

namespace cardsong::user {

namespace {

constexpr WORD kExtendedSignature = 0xFFFF;
constexpr WORD kOrdinalFollows = 0xFFFF;
constexpr WORD kButtonOrdinal = 0x80;
constexpr WORD kStaticOrdinal = 0x82;

class TemplateCursor {
public:
    explicit TemplateCursor(const void* start) : m_start(static_cast<const std::byte*>(start)), m_at(m_start) {}

    template <typename Value>
    Value Take()
    {
        Value value{};
        std::memcpy(&value, m_at, sizeof value);
        m_at += sizeof value;
        return value;
    }
    // A text, or the number of a resource or class; the number of a class is turned into its name.
    std::u16string TakeTextOrOrdinal()
    {
        std::u16string text;
        WORD unit = Take<WORD>();
        if (unit == kOrdinalFollows)
            return NameOfOrdinal(Take<WORD>());
        for (; unit != 0; unit = Take<WORD>())
            text.push_back(static_cast<char16_t>(unit));
        return text;
    }
    RECT TakeUnits()
    {
        const auto x = Take<short>();
        const auto y = Take<short>();
        const auto width = Take<short>();
        return { x, y, width, Take<short>() };
    }
    std::vector<std::byte> TakeBytes(std::size_t count)
    {
        const std::byte* const first = m_at;
        m_at += count;
        return { first, m_at };
    }
    void AlignToLong() { m_at += (4 - (m_at - m_start) % 4) % 4; }

private:
    static std::u16string NameOfOrdinal(WORD ordinal)
    {
        switch (ordinal) {
        case kButtonOrdinal: return u"Button";
        case kStaticOrdinal: return u"Static";
        default: return {};
        }
    }

    const std::byte* m_start;
    const std::byte* m_at;
};

ControlTemplate ReadControl(TemplateCursor& cursor)
{
    ControlTemplate control;
    cursor.AlignToLong();
    control.style = cursor.Take<DWORD>();
    control.exStyle = cursor.Take<DWORD>();
    control.units = cursor.TakeUnits();
    control.id = cursor.Take<WORD>();
    control.className = cursor.TakeTextOrOrdinal();
    control.text = cursor.TakeTextOrOrdinal();
    control.creationData = cursor.TakeBytes(cursor.Take<WORD>());
    return control;
}

} // namespace

std::optional<DialogTemplate> ReadDialogTemplate(const DLGTEMPLATE* source)
{
    TemplateCursor cursor(source);
    DialogTemplate result;
    result.style = cursor.Take<DWORD>();
    if (HIWORD(result.style) == kExtendedSignature)
        return std::nullopt;
    result.exStyle = cursor.Take<DWORD>();
    const auto controls = cursor.Take<WORD>();
    result.units = cursor.TakeUnits();
    cursor.TakeTextOrOrdinal(); // the menu: no window here has one
    result.className = cursor.TakeTextOrOrdinal();
    result.text = cursor.TakeTextOrOrdinal();
    if (result.style & DS_SETFONT) {
        result.fontPoints = cursor.Take<WORD>();
        result.fontName = cursor.TakeTextOrOrdinal();
    }
    for (int i = 0; i < controls; ++i)
        result.controls.push_back(ReadControl(cursor));
    return result;
}

} // namespace cardsong::user
