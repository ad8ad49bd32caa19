#include "platform/linux/kernel/code_pages.h"

#include "platform/device_tree.h"
#include "platform/linux/kernel/private_use_codes.h"
#include "platform/linux/kernel/unicode.h"

#include <array>
#include <cerrno>
#include <iconv.h>
#include <optional>
#include <span>

namespace cardsong::kernel {
namespace {

constexpr UINT kUtf8 = 65001;

struct CodePage {
    UINT number;
    const char* iconvName;
    bool hasDoubleBytes;
};
constexpr CodePage kCodePages[] = {
    { kChinesePrc, "CP936", true }, { kChineseTaiwan, "CP950", true }, { 932, "CP932", true },
    { 949, "CP949", true },         { 1252, "CP1252", false },
};

const CodePage* FindCodePage(UINT number)
{
    for (const auto& page : kCodePages) {
        if (page.number == number)
            return &page;
    }
    return nullptr;
}

// One direction of one page; opening a table costs far more than using it, so each thread keeps those it used.
class Converter {
public:
    Converter(const char* to, const char* from) : m_state(iconv_open(to, from)) {}
    ~Converter()
    {
        if (IsOpen())
            iconv_close(m_state);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // Converts as far as it goes; `input` keeps what is left. The bytes are appended to `output`.
    void Run(std::string_view& input, std::string& output) const
    {
        std::array<char, 4096> block;
        while (IsOpen() && !input.empty()) {
            char* from = const_cast<char*>(input.data()); // iconv only reads it
            std::size_t fromBytes = input.size();
            char* to = block.data();
            std::size_t toBytes = block.size();
            const auto result = iconv(m_state, &from, &fromBytes, &to, &toBytes);
            const bool isFull = result == static_cast<std::size_t>(-1) && errno == E2BIG;
            output.append(block.data(), block.size() - toBytes);
            input.remove_prefix(input.size() - fromBytes);
            if (!isFull)
                return;
        }
    }

private:
    bool IsOpen() const { return m_state != reinterpret_cast<iconv_t>(static_cast<std::intptr_t>(-1)); }

    iconv_t m_state;
};

const Converter& Decoder(const CodePage& page)
{
    thread_local std::array<std::optional<Converter>, std::size(kCodePages)> t_converters;
    auto& converter = t_converters[static_cast<std::size_t>(&page - kCodePages)];
    if (!converter)
        converter.emplace("UTF-16LE", page.iconvName);
    return *converter;
}

const Converter& Encoder(const CodePage& page)
{
    thread_local std::array<std::optional<Converter>, std::size(kCodePages)> t_converters;
    auto& converter = t_converters[static_cast<std::size_t>(&page - kCodePages)];
    if (!converter)
        converter.emplace(page.iconvName, "UTF-16LE");
    return *converter;
}

void AppendUnits(std::u16string& text, std::string_view littleEndian)
{
    for (std::size_t i = 0; i + 1 < littleEndian.size(); i += 2) {
        const auto low = static_cast<unsigned char>(littleEndian[i]);
        const auto high = static_cast<unsigned char>(littleEndian[i + 1]);
        text.push_back(static_cast<char16_t>(low | high << 8));
    }
}

// Single bytes outside the double-byte scheme that Windows maps and the tables here lack.
char16_t WindowsSingleByte(UINT codePage, unsigned char byte)
{
    if (codePage == kChinesePrc)
        return byte == 0x80 ? u'\u20AC' : byte == 0xFF ? u'\uF8F5' : u'\0';
    if (codePage == kChineseTaiwan)
        return byte == 0x80 ? u'\u0080' : byte == 0xFF ? u'\uF8F8' : u'\0';
    if (codePage == 1252) // the five holes of the page stand for the control characters
        return byte >= 0x80 && byte < 0xA0 ? static_cast<char16_t>(byte) : u'\0';
    return u'\0';
}

// Converts what the tables do not: a user's pair, a lone or wrong lead byte, an unassigned pair. Answers how many bytes
// it took.
std::size_t DecodeRest(const CodePage& page, std::string_view bytes, std::u16string& text, bool& isClean)
{
    const auto first = static_cast<unsigned char>(bytes[0]);
    if (const auto unit = WindowsSingleByte(page.number, first)) {
        isClean = isClean && first != 0xFF; // converted, but an error where errors are asked for
        text.push_back(unit);
        return 1;
    }
    // A lead byte takes its trail byte along even when the pair means nothing, but never the zero that ends a text.
    const bool isPair = page.hasDoubleBytes && bytes.size() > 1 && bytes[1] != '\0';
    const auto unit = isPair ? PrivateUseUnit(page.number, first, static_cast<unsigned char>(bytes[1])) : std::nullopt;
    isClean = isClean && unit.has_value();
    text.push_back(unit.value_or(u'?'));
    return isPair ? 2 : 1;
}

std::u16string DecodeUtf8Text(std::string_view bytes, bool& isClean)
{
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const auto character = DecodeUtf8(bytes);
        isClean = isClean && character.isValid;
        AppendUtf16(text, character.isValid ? character.value : U'\uFFFD');
        bytes.remove_prefix(character.bytes);
    }
    return text;
}

std::string EncodeUtf8Text(std::u16string_view text, bool& isClean)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0, units = 0; i < text.size(); i += units) {
        const auto character = DecodeUtf16(text, i, units);
        isClean = isClean && character.has_value();
        AppendUtf8(bytes, character.value_or(U'\uFFFD'));
    }
    return bytes;
}

std::optional<char> WindowsSingleUnit(UINT codePage, char16_t unit)
{
    for (unsigned byte = 0x80; byte <= 0xFF; ++byte) {
        if (WindowsSingleByte(codePage, static_cast<unsigned char>(byte)) == unit)
            return static_cast<char>(byte);
    }
    return std::nullopt;
}

std::string LittleEndian(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

} // namespace

UINT AnsiCodePage()
{
    switch (CurrentDeviceTree().uiLanguage) {
    case 0x0404: // Taiwan, Hong Kong, Macau
    case 0x0C04:
    case 0x1404: return kChineseTaiwan;
    case 0x0804: // PRC, Singapore
    case 0x1004: return kChinesePrc;
    case 0x0411: return 932;
    case 0x0412: return 949;
    default: return 1252;
    }
}

bool IsKnownCodePage(UINT codePage)
{
    return codePage == kUtf8 || FindCodePage(codePage);
}

std::u16string DecodeText(UINT codePage, std::string_view bytes, bool& isClean)
{
    const CodePage* const page = FindCodePage(codePage);
    if (!page)
        return DecodeUtf8Text(bytes, isClean);
    std::u16string text;
    text.reserve(bytes.size());
    std::string converted;
    while (!bytes.empty()) {
        converted.clear();
        Decoder(*page).Run(bytes, converted);
        AppendUnits(text, converted);
        if (!bytes.empty())
            bytes.remove_prefix(DecodeRest(*page, bytes, text, isClean));
    }
    return text;
}

std::string EncodeText(UINT codePage, std::u16string_view text, std::string_view replacement, bool& isClean)
{
    const CodePage* const page = FindCodePage(codePage);
    if (!page)
        return EncodeUtf8Text(text, isClean);
    const std::string units = LittleEndian(text);
    std::string_view rest = units;
    std::string bytes;
    while (!rest.empty()) {
        Encoder(*page).Run(rest, bytes);
        if (rest.empty())
            break;
        const auto unit = text[(units.size() - rest.size()) / 2];
        if (const auto byte = WindowsSingleUnit(codePage, unit)) {
            bytes.push_back(*byte);
        } else if (const auto pair = PrivateUsePair(codePage, unit); !pair.empty()) {
            bytes += pair;
        } else {
            bytes += replacement;
            isClean = false;
        }
        rest.remove_prefix(2);
    }
    return bytes;
}

} // namespace cardsong::kernel
