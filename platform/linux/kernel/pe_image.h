// Reads the resources of a PE file (PE32 or PE32+; the Microsoft PE and COFF format) that lies in memory as it lies
// on disk. Trusts no byte of it. Knows no handle, no path and no string table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace cardsong::kernel {

// The type or the name of a resource: a number, or text compared without case.
struct ResourceId {
    std::uint16_t number = 0;
    std::u16string text; // stands for the id when not empty
};

enum class ResourceError { None, NoResources, NoType, NoName, NoLanguage, BadImage };

struct ResourceEntry {
    ResourceError error = ResourceError::None;
    std::size_t entryOffset = 0; // of the data entry within the file
};

class PeImage {
public:
    // `file` is borrowed for the life of the object. Nothing when it is no PE file.
    static std::optional<PeImage> Open(std::span<const std::byte> file);

    // `language` is preferred, then its primary language, then the neutral one, then the first there is.
    ResourceEntry Find(const ResourceId& type, const ResourceId& name, std::uint16_t language) const;

    // The bytes that a data entry (an offset that Find answered) names; nothing when they do not lie within the file.
    std::optional<std::span<const std::byte>> Data(std::size_t entryOffset) const;

private:
    // One run of bytes that the image maps somewhere.
    struct Section {
        std::uint32_t address;
        std::uint32_t sizeBytes;
        std::uint32_t fileOffset;
    };

    explicit PeImage(std::span<const std::byte> file) : m_file(file) {}
    bool ReadHeaders();
    bool ReadSections(std::size_t offset, unsigned count);
    std::optional<std::size_t> FileOffset(std::uint32_t address) const;
    std::optional<std::uint16_t> U16(std::size_t offset) const;
    std::optional<std::uint32_t> U32(std::size_t offset) const;
    bool NameEquals(std::uint32_t nameOffset, const std::u16string& text) const;
    std::optional<std::uint32_t> FindInDirectory(std::uint32_t directory, const ResourceId& id) const;
    std::optional<std::uint32_t> FindLanguage(std::uint32_t directory, std::uint16_t language) const;
    template <typename Visit>
    void ForEachEntry(std::uint32_t directory, Visit visit) const;

    static constexpr unsigned kMaxSections = 96;

    std::span<const std::byte> m_file;
    Section m_sections[kMaxSections] = {};
    unsigned m_sectionCount = 0;
    std::uint32_t m_resourceAddress = 0;
    std::optional<std::size_t> m_resources; // file offset of the root directory
};

} // namespace cardsong::kernel
