// Puts WMA songs together, object by object, for the tests of their reader.
#pragma once

#include "tests/tags/bytes.h"

namespace cardsong::test::wma {

inline Bytes Guid(std::uint32_t a, int b, int c, std::uint64_t rest)
{
    return Bytes()
        .Little(a, 4)
        .Little(static_cast<std::uint64_t>(b), 2)
        .Little(static_cast<std::uint64_t>(c), 2)
        .Big(rest, 8);
}

inline const Bytes kHeaderGuid = Guid(0x75B22630, 0x668E, 0x11CF, 0xA6D900AA0062CE6C);
inline const Bytes kPropertiesGuid = Guid(0x8CABDCA1, 0xA947, 0x11CF, 0x8EE400C00C205365);
inline const Bytes kContentGuid = Guid(0x75B22633, 0x668E, 0x11CF, 0xA6D900AA0062CE6C);
inline const Bytes kExtendedGuid = Guid(0xD2D0A440, 0xE307, 0x11D2, 0x97F000A0C95EA850);
inline const Bytes kDataGuid = Guid(0x75B22636, 0x668E, 0x11CF, 0xA6D900AA0062CE6C);
inline const Bytes kOtherGuid = Guid(0x01234567, 0x89AB, 0xCDEF, 0x0123456789ABCDEF);

inline Bytes Object(const Bytes& guid, const Bytes& body)
{
    return Bytes().Append(guid).Little(body.size() + 24, 8).Append(body);
}

// A song of these objects, and a Data Object behind them.
inline Bytes Song(const std::vector<Bytes>& objects)
{
    Bytes bytes = kHeaderGuid;
    bytes.Little(0, 8).Little(objects.size(), 4).Fill(1, 1).Fill(1, 2);
    for (const Bytes& object : objects)
        bytes.Append(object);
    return bytes.Append(kDataGuid).Little(1'000'000, 8).Fill(26);
}

inline Bytes Properties(std::uint64_t playDuration, std::uint32_t prerollMs, std::uint32_t flags)
{
    Bytes body;
    body.Fill(16, 0xAB).Little(11, 8).Little(22, 8).Little(33, 8).Little(playDuration, 8).Little(44, 8);
    body.Little(prerollMs, 4).Little(55, 4).Little(flags, 4).Little(66, 4).Little(77, 4).Little(88, 4);
    return Object(kPropertiesGuid, body);
}

inline Bytes Utf16(const std::string& text)
{
    Bytes bytes;
    for (const char letter : text)
        bytes.Text(std::string(1, letter)).Fill(1);
    return bytes;
}

inline Bytes Content(const std::vector<std::string>& texts)
{
    Bytes body;
    for (const std::string& text : texts)
        body.Little(text.size() * 2, 2);
    for (const std::string& text : texts)
        body.Append(Utf16(text));
    return Object(kContentGuid, body);
}

inline Bytes Descriptor(const std::string& name, std::uint64_t type, const Bytes& value)
{
    Bytes bytes;
    bytes.Little(name.size() * 2 + 2, 2).Append(Utf16(name)).Fill(2).Little(type, 2).Little(value.size(), 2);
    return bytes.Append(value);
}

inline Bytes Extended(const std::vector<Bytes>& descriptors)
{
    Bytes body;
    body.Little(descriptors.size(), 2);
    for (const Bytes& descriptor : descriptors)
        body.Append(descriptor);
    return Object(kExtendedGuid, body);
}

inline Bytes Number(std::uint64_t value, int sizeBytes)
{
    return Bytes().Little(value, sizeBytes);
}

} // namespace cardsong::test::wma
