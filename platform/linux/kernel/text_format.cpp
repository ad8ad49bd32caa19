#include "platform/linux/kernel/text_format.h"

#include "platform/linux/kernel/code_pages.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace cardsong::kernel {
namespace {

constexpr int kMaxWidth = 1 << 16; // a foreign format must not ask for gigabytes of blanks

struct Conversion {
    bool alignsLeft = false;
    bool padsWithZeros = false;
    bool showsSign = false;
    bool leavesBlank = false;
    bool isAlternate = false;
    int width = 0;
    int precision = -1;
    enum class Size { Default, Half, Long, LongLong } size = Size::Default;
    char16_t type = 0;
};

// va_list may be an array type, which does not survive being handed on; within a record it does.
struct Arguments {
    va_list list;
};

bool ReadFlag(char16_t unit, Conversion& conversion)
{
    switch (unit) {
    case u'-': conversion.alignsLeft = true; return true;
    case u'0': conversion.padsWithZeros = true; return true;
    case u'+': conversion.showsSign = true; return true;
    case u' ': conversion.leavesBlank = true; return true;
    case u'#': conversion.isAlternate = true; return true;
    default: return false;
    }
}

int ReadNumber(const WCHAR*& at, Arguments& arguments)
{
    if (*at == u'*') {
        ++at;
        return std::clamp(va_arg(arguments.list, int), -kMaxWidth, kMaxWidth);
    }
    int value = 0;
    for (; *at >= u'0' && *at <= u'9'; ++at)
        value = std::min(value * 10 + (*at - u'0'), kMaxWidth);
    return value;
}

void ReadSize(const WCHAR*& at, Conversion& conversion)
{
    using Size = Conversion::Size;
    if (at[0] == u'I' && at[1] == u'6' && at[2] == u'4') {
        conversion.size = Size::LongLong;
        at += 3;
    } else if (at[0] == u'l' && at[1] == u'l') {
        conversion.size = Size::LongLong;
        at += 2;
    } else if (*at == u'l' || *at == u'w') {
        conversion.size = Size::Long;
        ++at;
    } else if (*at == u'h') {
        conversion.size = Size::Half;
        ++at;
    }
}

// Reads what follows a "%" up to and with the conversion's letter.
Conversion ReadConversion(const WCHAR*& at, Arguments& arguments)
{
    Conversion conversion;
    while (ReadFlag(*at, conversion))
        ++at;
    conversion.width = ReadNumber(at, arguments);
    if (conversion.width < 0) {
        conversion.alignsLeft = true;
        conversion.width = -conversion.width;
    }
    if (*at == u'.') {
        ++at;
        conversion.precision = ReadNumber(at, arguments);
    }
    ReadSize(at, conversion);
    conversion.type = *at;
    if (*at != 0)
        ++at;
    return conversion;
}

void AppendPadded(std::u16string& out, const Conversion& conversion, std::u16string_view prefix,
                  std::u16string_view body)
{
    const auto width = static_cast<std::size_t>(conversion.width);
    const auto used = prefix.size() + body.size();
    const std::size_t padding = width > used ? width - used : 0;
    const bool zeros = conversion.padsWithZeros && !conversion.alignsLeft;
    if (!conversion.alignsLeft && !zeros)
        out.append(padding, u' ');
    out += prefix;
    if (zeros)
        out.append(padding, u'0');
    out += body;
    if (conversion.alignsLeft)
        out.append(padding, u' ');
}

std::u16string Digits(std::uint64_t value, unsigned base, bool isUpper)
{
    const std::u16string_view symbols = isUpper ? u"0123456789ABCDEF" : u"0123456789abcdef";
    std::u16string digits;
    for (; value != 0; value /= base)
        digits.push_back(symbols[value % base]);
    std::reverse(digits.begin(), digits.end());
    return digits;
}

void AppendInteger(std::u16string& out, Conversion conversion, std::uint64_t magnitude, std::u16string_view sign,
                   unsigned base)
{
    const bool isUpper = conversion.type == u'X';
    std::u16string prefix(sign);
    if (conversion.isAlternate && base == 16 && magnitude != 0)
        prefix += isUpper ? u"0X" : u"0x";
    auto digits = Digits(magnitude, base, isUpper);
    const auto wanted = static_cast<std::size_t>(conversion.precision < 0 ? 1 : conversion.precision);
    if (digits.size() < wanted)
        digits.insert(0, wanted - digits.size(), u'0');
    if (conversion.isAlternate && base == 8 && (digits.empty() || digits.front() != u'0'))
        digits.insert(0, 1, u'0');
    if (conversion.precision >= 0)
        conversion.padsWithZeros = false; // the precision says how many digits there are
    AppendPadded(out, conversion, prefix, digits);
}

std::int64_t SignedArgument(const Conversion& conversion, Arguments& arguments)
{
    if (conversion.size == Conversion::Size::LongLong)
        return va_arg(arguments.list, std::int64_t);
    const auto value = va_arg(arguments.list, std::int32_t);
    return conversion.size == Conversion::Size::Half ? static_cast<std::int16_t>(value) : value;
}

std::uint64_t UnsignedArgument(const Conversion& conversion, Arguments& arguments)
{
    if (conversion.size == Conversion::Size::LongLong)
        return va_arg(arguments.list, std::uint64_t);
    const auto value = va_arg(arguments.list, std::uint32_t);
    return conversion.size == Conversion::Size::Half ? static_cast<std::uint16_t>(value) : value;
}

void AppendSigned(std::u16string& out, const Conversion& conversion, Arguments& arguments)
{
    const auto value = SignedArgument(conversion, arguments);
    const auto magnitude = value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    const auto* const sign = value < 0 ? u"-" : conversion.showsSign ? u"+" : conversion.leavesBlank ? u" " : u"";
    AppendInteger(out, conversion, magnitude, sign, 10);
}

// Whether a text or character conversion takes 8-bit text: the small letters follow the format, the capitals are
// opposite.
bool IsNarrow(const Conversion& conversion)
{
    const bool isCapital = conversion.type == u'S' || conversion.type == u'C';
    switch (conversion.size) {
    case Conversion::Size::Half: return true;
    case Conversion::Size::Long: return false;
    default: return isCapital;
    }
}

std::u16string Widen(std::string_view bytes)
{
    bool ignored = true;
    return DecodeText(AnsiCodePage(), bytes, ignored);
}

void AppendCharacter(std::u16string& out, const Conversion& conversion, Arguments& arguments)
{
    const auto value = va_arg(arguments.list, int);
    const auto narrow = static_cast<char>(value);
    const auto text =
        IsNarrow(conversion) ? Widen({ &narrow, 1 }) : std::u16string(1, static_cast<char16_t>(value & 0xFFFF));
    AppendPadded(out, conversion, {}, text);
}

// Text up to its zero, or up to the precision without looking for a zero behind it.
void AppendString(std::u16string& out, const Conversion& conversion, Arguments& arguments)
{
    const void* const pointer = va_arg(arguments.list, const void*);
    const bool isLimited = conversion.precision >= 0;
    const auto limit = static_cast<std::size_t>(isLimited ? conversion.precision : 0);
    std::u16string text;
    if (!pointer) {
        text = u"(null)";
    } else if (IsNarrow(conversion)) {
        const auto* const bytes = static_cast<const char*>(pointer);
        text = Widen({ bytes, isLimited ? strnlen(bytes, limit) : std::strlen(bytes) });
    } else {
        const auto* const units = static_cast<const WCHAR*>(pointer);
        std::size_t count = 0;
        while ((!isLimited || count < limit) && units[count] != 0)
            ++count;
        text.assign(units, count);
    }
    if (isLimited && text.size() > limit)
        text.resize(limit);
    AppendPadded(out, conversion, {}, text);
}

void AppendPointer(std::u16string& out, Conversion conversion, Arguments& arguments)
{
    conversion.type = u'X';
    conversion.precision = sizeof(void*) * 2;
    AppendInteger(out, conversion, reinterpret_cast<ULONG_PTR>(va_arg(arguments.list, void*)), {}, 16);
}

void AppendFloating(std::u16string& out, Conversion conversion, Arguments& arguments)
{
    constexpr int kMaxDigits = 64;
    const char format[] = { '%', '#', '.', '*', static_cast<char>(conversion.type), '\0' };
    const char plain[] = { '%', '.', '*', static_cast<char>(conversion.type), '\0' };
    const double value = va_arg(arguments.list, double);
    const int precision = conversion.precision < 0 ? 6 : std::min(conversion.precision, kMaxDigits);
    char digits[512]; // the largest double has 309 digits before its point
    const double magnitude = value < 0 ? -value : value;
    const int length = conversion.isAlternate ? std::snprintf(digits, sizeof digits, format, precision, magnitude)
                                              : std::snprintf(digits, sizeof digits, plain, precision, magnitude);
    const auto* const sign = value < 0 ? u"-" : conversion.showsSign ? u"+" : conversion.leavesBlank ? u" " : u"";
    AppendPadded(out, conversion, sign, std::u16string(digits, digits + std::max(length, 0)));
}

// False when the letter is no conversion.
bool Append(std::u16string& out, const Conversion& conversion, Arguments& arguments)
{
    switch (conversion.type) {
    case u'd':
    case u'i': AppendSigned(out, conversion, arguments); return true;
    case u'u': AppendInteger(out, conversion, UnsignedArgument(conversion, arguments), {}, 10); return true;
    case u'x':
    case u'X': AppendInteger(out, conversion, UnsignedArgument(conversion, arguments), {}, 16); return true;
    case u'o': AppendInteger(out, conversion, UnsignedArgument(conversion, arguments), {}, 8); return true;
    case u'c':
    case u'C': AppendCharacter(out, conversion, arguments); return true;
    case u's':
    case u'S': AppendString(out, conversion, arguments); return true;
    case u'p': AppendPointer(out, conversion, arguments); return true;
    case u'f':
    case u'e':
    case u'E':
    case u'g':
    case u'G': AppendFloating(out, conversion, arguments); return true;
    default: return false;
    }
}

} // namespace

std::u16string FormatText(const WCHAR* format, va_list arguments)
{
    Arguments copy;
    va_copy(copy.list, arguments);
    std::u16string out;
    while (*format != 0) {
        if (*format != u'%') {
            out.push_back(*format++);
            continue;
        }
        const WCHAR* at = format + 1;
        if (*at == u'%') {
            out.push_back(u'%');
            format = at + 1;
            continue;
        }
        const auto conversion = ReadConversion(at, copy);
        if (!Append(out, conversion, copy) && conversion.type != 0)
            out.push_back(conversion.type);
        format = at;
    }
    va_end(copy.list);
    return out;
}

} // namespace cardsong::kernel
