#include "platform/linux/kernel/pe_image.h"

#include "platform/linux/kernel/unicode.h"

#include <algorithm>

namespace cardsong::kernel {
namespace {

constexpr std::uint16_t kDosMagic = 0x5A4D;
constexpr std::uint32_t kPeSignature = 0x00004550;
constexpr std::size_t kNewHeaderField = 0x3C;
constexpr std::size_t kCoffHeaderBytes = 20;
constexpr std::size_t kSectionHeaderBytes = 40;
constexpr std::uint16_t kPe32 = 0x10B;
constexpr std::uint16_t kPe32Plus = 0x20B;
constexpr std::uint32_t kResourceDirectory = 2; // index among the data directories
constexpr std::uint32_t kHighBit = 0x80000000;  // a name instead of a number; a directory instead of data
constexpr std::size_t kDirectoryBytes = 16;
constexpr std::size_t kEntryBytes = 8;

} // namespace

std::optional<std::uint16_t> PeImage::U16(std::size_t offset) const
{
    if (offset > m_file.size() || m_file.size() - offset < 2)
        return std::nullopt;
    return static_cast<std::uint16_t>(std::to_integer<unsigned>(m_file[offset]) |
                                      std::to_integer<unsigned>(m_file[offset + 1]) << 8);
}

std::optional<std::uint32_t> PeImage::U32(std::size_t offset) const
{
    const auto low = U16(offset);
    const auto high = low ? U16(offset + 2) : std::nullopt;
    if (!high)
        return std::nullopt;
    return *low | static_cast<std::uint32_t>(*high) << 16;
}

std::optional<PeImage> PeImage::Open(std::span<const std::byte> file)
{
    PeImage image(file);
    if (!image.ReadHeaders())
        return std::nullopt;
    return image;
}

bool PeImage::ReadHeaders()
{
    const auto newHeader = U16(0) == kDosMagic ? U32(kNewHeaderField) : std::nullopt;
    if (!newHeader || U32(*newHeader) != kPeSignature)
        return false;
    const std::size_t coff = std::size_t{ *newHeader } + 4;
    const std::size_t optional = coff + kCoffHeaderBytes;
    const auto sectionCount = U16(coff + 2);
    const auto optionalBytes = U16(coff + 16);
    const auto magic = U16(optional);
    if (!sectionCount || !optionalBytes || (magic != kPe32 && magic != kPe32Plus))
        return false;
    const std::size_t countField = magic == kPe32 ? 92 : 108;
    const std::size_t resourceField = countField + 4 + kResourceDirectory * 8;
    if (!ReadSections(optional + *optionalBytes, *sectionCount))
        return false;
    const auto directories = U32(optional + countField);
    if (!directories || *directories <= kResourceDirectory || *optionalBytes < resourceField + 8)
        return true; // a module without resources
    const auto address = U32(optional + resourceField);
    if (!address)
        return false;
    m_resourceAddress = *address;
    if (m_resourceAddress != 0)
        m_resources = FileOffset(m_resourceAddress);
    return true;
}

bool PeImage::ReadSections(std::size_t offset, unsigned count)
{
    if (count > kMaxSections)
        return false;
    for (unsigned i = 0; i < count; ++i) {
        const std::size_t header = offset + i * kSectionHeaderBytes;
        const auto address = U32(header + 12);
        const auto sizeBytes = U32(header + 16);
        const auto fileOffset = U32(header + 20);
        if (!address || !sizeBytes || !fileOffset)
            return false;
        m_sections[m_sectionCount++] = { *address, *sizeBytes, *fileOffset };
    }
    return true;
}

std::optional<std::size_t> PeImage::FileOffset(std::uint32_t address) const
{
    for (const Section& section : std::span(m_sections, m_sectionCount)) {
        if (address < section.address || address - section.address >= section.sizeBytes)
            continue;
        const std::size_t offset = std::size_t{ section.fileOffset } + (address - section.address);
        return offset < m_file.size() ? std::optional(offset) : std::nullopt;
    }
    return std::nullopt;
}

// A name is its length in units and the units, at an offset from the root of the resources.
bool PeImage::NameEquals(std::uint32_t nameOffset, const std::u16string& text) const
{
    const std::size_t offset = *m_resources + nameOffset;
    const auto units = U16(offset);
    if (!units || *units != text.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto unit = U16(offset + 2 + 2 * i);
        if (!unit || ToLowerUnit(static_cast<char16_t>(*unit)) != ToLowerUnit(text[i]))
            return false;
    }
    return true;
}

// `visit` gets the id and the target of each entry and returns true to stop.
template <typename Visit>
void PeImage::ForEachEntry(std::uint32_t directory, Visit visit) const
{
    const std::size_t start = *m_resources + directory;
    const auto named = U16(start + 12);
    const auto numbered = U16(start + 14);
    if (!named || !numbered)
        return;
    const std::size_t count = std::size_t{ *named } + *numbered;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = start + kDirectoryBytes + i * kEntryBytes;
        const auto id = U32(entry);
        const auto target = U32(entry + 4);
        if (!id || !target || visit(*id, *target))
            return;
    }
}

std::optional<std::uint32_t> PeImage::FindInDirectory(std::uint32_t directory, const ResourceId& id) const
{
    std::optional<std::uint32_t> found;
    ForEachEntry(directory, [&](std::uint32_t entryId, std::uint32_t target) {
        const bool isNamed = (entryId & kHighBit) != 0;
        const bool fits = id.text.empty() ? entryId == id.number : isNamed && NameEquals(entryId & ~kHighBit, id.text);
        if (fits && (target & kHighBit) != 0) // the third level holds the data
            found = target & ~kHighBit;
        return fits;
    });
    return found;
}

std::optional<std::uint32_t> PeImage::FindLanguage(std::uint32_t directory, std::uint16_t language) const
{
    constexpr std::uint16_t kPrimaryMask = 0x3FF;
    const auto rank = [language](std::uint32_t candidate) {
        if (candidate == language)
            return 3;
        if ((candidate & kPrimaryMask) == (language & kPrimaryMask))
            return 2;
        return candidate == 0 ? 1 : 0;
    };
    std::optional<std::uint32_t> best;
    int bestRank = -1;
    ForEachEntry(directory, [&](std::uint32_t entryId, std::uint32_t target) {
        const bool isData = (target & kHighBit) == 0;
        if (isData && rank(entryId) > bestRank) {
            best = target;
            bestRank = rank(entryId);
        }
        return bestRank == 3;
    });
    return best;
}

ResourceEntry PeImage::Find(const ResourceId& type, const ResourceId& name, std::uint16_t language) const
{
    if (!m_resources)
        return { m_resourceAddress == 0 ? ResourceError::NoResources : ResourceError::BadImage, 0 };
    const auto names = FindInDirectory(0, type);
    if (!names)
        return { ResourceError::NoType, 0 };
    const auto languages = FindInDirectory(*names, name);
    if (!languages)
        return { ResourceError::NoName, 0 };
    const auto entry = FindLanguage(*languages, language);
    if (!entry)
        return { ResourceError::NoLanguage, 0 };
    return { ResourceError::None, *m_resources + *entry };
}

std::optional<std::span<const std::byte>> PeImage::Data(std::size_t entryOffset) const
{
    const auto address = U32(entryOffset);
    const auto sizeBytes = address ? U32(entryOffset + 4) : std::nullopt;
    const auto offset = sizeBytes ? FileOffset(*address) : std::nullopt;
    if (!offset || m_file.size() - *offset < *sizeBytes)
        return std::nullopt;
    return m_file.subspan(*offset, *sizeBytes);
}

} // namespace cardsong::kernel
