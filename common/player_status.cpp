#include "common/player_status.h"

#include <array>
#include <charconv>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr DWORD kMostBytes = 4096; // a title has 260 units at most

void Append(WString& text, WStringView name, WStringView value)
{
    text.append(name).append(TEXT("=")).append(value).append(TEXT(" "));
}

void Append(WString& text, WStringView name, std::int64_t value)
{
    const std::string digits = std::to_string(value);
    Append(text, name, WString(digits.begin(), digits.end()));
}

WString WithoutControls(WString text)
{
    for (WCHAR& unit : text)
        unit = unit < 0x20 || unit == 0x7F ? TEXT(' ') : unit;
    return text;
}

// Takes fields off the start of a text; a field that is not the one expected makes all that follow fail, too.
class FieldReader {
public:
    explicit FieldReader(WStringView text) : m_text(text) {}
    bool Ok() const { return m_isOk; }
    WStringView Rest(WStringView name)
    {
        Expect(name);
        return m_isOk ? m_text : WStringView();
    }
    WStringView Word(WStringView name)
    {
        Expect(name);
        const auto end = m_text.find(TEXT(' '));
        m_isOk = m_isOk && end != WStringView::npos && end != 0;
        if (!m_isOk)
            return {};
        const WStringView word = m_text.substr(0, end);
        m_text.remove_prefix(end + 1);
        return word;
    }
    template <typename Number>
    Number Decimal(WStringView name)
    {
        const WStringView word = Word(name);
        std::string digits;
        for (const WCHAR unit : word)
            digits += unit < 0x80 ? static_cast<char>(unit) : '?';
        Number number = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        m_isOk = m_isOk && error == std::errc() && end == digits.data() + digits.size();
        return m_isOk ? number : Number{ 0 };
    }
    WString OneOf(WStringView name, const std::array<const WCHAR*, 3>& names)
    {
        const WStringView word = Word(name);
        for (const WCHAR* const known : names)
            if (word == known)
                return known;
        m_isOk = false;
        return {};
    }

private:
    void Expect(WStringView name)
    {
        m_isOk = m_isOk && m_text.size() > name.size() && m_text.substr(0, name.size()) == name &&
                 m_text[name.size()] == TEXT('=');
        if (m_isOk)
            m_text.remove_prefix(name.size() + 1);
    }

    WStringView m_text;
    bool m_isOk = true;
};

} // namespace

WString StatusText(const PlayerStatus& status)
{
    WString text;
    Append(text, TEXT("request"), status.request);
    Append(text, TEXT("state"), status.state);
    Append(text, TEXT("number"), status.number);
    Append(text, TEXT("count"), status.count);
    Append(text, TEXT("position_ms"), status.positionMs);
    Append(text, TEXT("length_ms"), status.lengthMs);
    Append(text, TEXT("shuffle"), status.shuffle ? 1 : 0);
    Append(text, TEXT("repeat"), status.repeat);
    return text + TEXT("song=") + WithoutControls(status.song);
}

std::optional<PlayerStatus> ReadStatusText(WStringView text)
{
    FieldReader reader(text);
    PlayerStatus status;
    status.request = reader.Decimal<std::uint32_t>(TEXT("request"));
    status.state = reader.OneOf(TEXT("state"), { kStopped, kPlaying, kPaused });
    status.number = reader.Decimal<std::int32_t>(TEXT("number"));
    status.count = reader.Decimal<std::int32_t>(TEXT("count"));
    status.positionMs = reader.Decimal<std::int32_t>(TEXT("position_ms"));
    status.lengthMs = reader.Decimal<std::int32_t>(TEXT("length_ms"));
    status.shuffle = reader.Decimal<std::int32_t>(TEXT("shuffle")) != 0;
    status.repeat = reader.OneOf(TEXT("repeat"), { kRepeatOff, kRepeatAll, kRepeatSingle });
    status.song = reader.Rest(TEXT("song"));
    return reader.Ok() ? std::optional(status) : std::nullopt;
}

bool StoreStatus(const PlayerStatus& status)
{
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kStatusKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return false;
    const WString text = StatusText(status);
    const auto sizeBytes = static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR));
    const LSTATUS result =
        RegSetValueExW(key, kStatusValue, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), sizeBytes);
    RegCloseKey(key);
    return result == ERROR_SUCCESS;
}

std::optional<PlayerStatus> LoadStatus()
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kStatusKey, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return std::nullopt;
    std::vector<BYTE> bytes(kMostBytes);
    DWORD sizeBytes = kMostBytes;
    DWORD type = 0;
    const LSTATUS result = RegQueryValueExW(key, kStatusValue, nullptr, &type, bytes.data(), &sizeBytes);
    RegCloseKey(key);
    if (result != ERROR_SUCCESS || type != REG_SZ || sizeBytes > kMostBytes)
        return std::nullopt;
    WString text(sizeBytes / sizeof(WCHAR), 0);
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(WCHAR));
    return ReadStatusText(WStringView(text).substr(0, text.find(WCHAR{ 0 })));
}
