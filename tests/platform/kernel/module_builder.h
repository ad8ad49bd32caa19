// Builds small resource-only PE modules in memory, byte by byte, whole or spoilt, for tests. Knows no reader.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cardsong::test {

enum class ModuleKind { Pe32, Pe32Plus };

// One resource of a module: numbers, or names where the text is not empty.
struct ModuleResource {
    std::uint16_t type;
    std::uint16_t name;
    std::u16string nameText;
    std::uint16_t language;
    std::string data;
};

class ModuleBuilder {
public:
    explicit ModuleBuilder(ModuleKind kind) : m_kind(kind) {}

    ModuleBuilder& Add(ModuleResource resource)
    {
        m_resources.push_back(std::move(resource));
        return *this;
    }
    // A block of sixteen strings; `first` is the id of its first string.
    ModuleBuilder& AddStrings(std::uint16_t first, std::uint16_t language, const std::vector<std::u16string>& strings)
    {
        std::string data;
        for (std::size_t i = 0; i < 16; ++i) {
            const std::u16string text = i < strings.size() ? strings[i] : std::u16string();
            AppendNumber(data, text.size(), 2);
            for (const char16_t unit : text)
                AppendNumber(data, unit, 2);
        }
        return Add({ 6, static_cast<std::uint16_t>(first / 16 + 1), {}, language, std::move(data) });
    }

    // The module's bytes. One section, ".rsrc", holds a directory for each resource on its own way from the root.
    std::string Build() const
    {
        const std::string section = BuildSection();
        std::string file = BuildHeaders(section.size());
        file.resize(kSectionOffset, '\0');
        file += section;
        file.resize(kSectionOffset + Padded(section.size()), '\0');
        return file;
    }

    static constexpr std::size_t kSectionOffset = 0x200;
    static constexpr std::uint32_t kSectionAddress = 0x1000;

private:
    static std::size_t Padded(std::size_t bytes) { return (bytes + 0x1FF) / 0x200 * 0x200; }

    static void AppendNumber(std::string& bytes, std::uint64_t number, int count)
    {
        for (int i = 0; i < count; ++i, number >>= 8)
            bytes.push_back(static_cast<char>(number & 0xFF));
    }

    std::string BuildHeaders(std::size_t sectionBytes) const
    {
        const bool isWide = m_kind == ModuleKind::Pe32Plus;
        const std::uint16_t optionalBytes = isWide ? 240 : 224;
        std::string file = "MZ";
        file.resize(0x3C, '\0');
        AppendNumber(file, 0x40, 4); // where the PE header lies
        file += std::string("PE\0\0", 4);
        AppendNumber(file, isWide ? 0x8664 : 0x14C, 2); // machine
        AppendNumber(file, 1, 2);                       // sections
        AppendNumber(file, 0, 12);                      // time, symbols
        AppendNumber(file, optionalBytes, 2);
        AppendNumber(file, isWide ? 0x2022 : 0x2102, 2); // characteristics: a library
        AppendOptionalHeader(file, isWide, sectionBytes);
        file += std::string(".rsrc\0\0\0", 8);
        AppendNumber(file, sectionBytes, 4); // virtual size
        AppendNumber(file, kSectionAddress, 4);
        AppendNumber(file, Padded(sectionBytes), 4); // raw size
        AppendNumber(file, kSectionOffset, 4);
        AppendNumber(file, 0, 12);         // relocations and line numbers
        AppendNumber(file, 0x40000040, 4); // initialised data, readable
        return file;
    }

    static void AppendOptionalHeader(std::string& file, bool isWide, std::size_t sectionBytes)
    {
        AppendNumber(file, isWide ? 0x20B : 0x10B, 2);
        AppendNumber(file, 0, isWide ? 22 : 26); // linker, sizes of code and data, entry, bases
        AppendNumber(file, isWide ? 0x180000000 : 0x10000000, isWide ? 8 : 4); // preferred address
        AppendNumber(file, 0x1000, 4);                                         // section alignment
        AppendNumber(file, 0x200, 4);                                          // file alignment
        AppendNumber(file, 4, 2);                                              // versions: system, image, subsystem
        AppendNumber(file, 0, 6);
        AppendNumber(file, 4, 2);
        AppendNumber(file, 0, 6);
        AppendNumber(file, kSectionAddress + (sectionBytes + 0xFFF) / 0x1000 * 0x1000, 4); // size of the image
        AppendNumber(file, kSectionOffset, 4);                                             // size of the headers
        AppendNumber(file, 0, 4);                                                          // checksum
        AppendNumber(file, 2, 2);                                                          // subsystem
        AppendNumber(file, 0, 2);
        AppendNumber(file, 0, isWide ? 32 : 16); // stack and heap
        AppendNumber(file, 0, 4);
        AppendNumber(file, 16, 4); // data directories
        AppendNumber(file, 0, 16); // exports, imports
        AppendNumber(file, kSectionAddress, 4);
        AppendNumber(file, sectionBytes, 4);
        AppendNumber(file, 0, 13 * 8);
    }

    // Types in the order of their first resource; a type's names lie in one directory, each name's languages in
    // another.
    std::string BuildSection() const
    {
        std::vector<std::uint16_t> types;
        for (const auto& resource : m_resources) {
            if (types.empty() || types.back() != resource.type)
                types.push_back(resource.type);
        }
        std::string section = Directory(0, types.size());
        const std::size_t typeEntries = section.size();
        section.resize(typeEntries + types.size() * 8, '\0');
        for (std::size_t i = 0; i < types.size(); ++i) {
            PutNumber(section, typeEntries + i * 8, types[i]);
            PutNumber(section, typeEntries + i * 8 + 4, 0x80000000 | section.size());
            AppendType(section, types[i]);
        }
        return section;
    }

    void AppendType(std::string& section, std::uint16_t type) const
    {
        std::vector<std::vector<const ModuleResource*>> names; // resources of one name
        std::size_t named = 0;
        for (const auto& resource : m_resources) {
            if (resource.type != type)
                continue;
            const auto isSame = [&resource](const ModuleResource* other) {
                return other->name == resource.name && other->nameText == resource.nameText;
            };
            if (names.empty() || !isSame(names.back().front())) {
                names.emplace_back();
                named += resource.nameText.empty() ? 0 : 1;
            }
            names.back().push_back(&resource);
        }
        section += Directory(named, names.size() - named);
        const std::size_t entries = section.size();
        section.resize(entries + names.size() * 8, '\0');
        for (std::size_t i = 0; i < names.size(); ++i) {
            const auto& first = *names[i].front();
            PutNumber(section, entries + i * 8,
                      first.nameText.empty() ? first.name : 0x80000000 | AppendName(section, first.nameText));
            PutNumber(section, entries + i * 8 + 4, 0x80000000 | section.size());
            AppendLanguages(section, names[i]);
        }
    }

    static void AppendLanguages(std::string& section, const std::vector<const ModuleResource*>& resources)
    {
        section += Directory(0, resources.size());
        const std::size_t entries = section.size();
        section.resize(entries + resources.size() * 8, '\0');
        for (std::size_t i = 0; i < resources.size(); ++i) {
            PutNumber(section, entries + i * 8, resources[i]->language);
            PutNumber(section, entries + i * 8 + 4, section.size());
            AppendNumber(section, kSectionAddress + section.size() + 16, 4);
            AppendNumber(section, resources[i]->data.size(), 4);
            AppendNumber(section, 0, 8); // code page, reserved
            section += resources[i]->data;
            section.resize((section.size() + 3) / 4 * 4, '\0');
        }
    }

    static std::size_t AppendName(std::string& section, const std::u16string& name)
    {
        const std::size_t offset = section.size();
        AppendNumber(section, name.size(), 2);
        for (const char16_t unit : name)
            AppendNumber(section, unit, 2);
        section.resize((section.size() + 3) / 4 * 4, '\0');
        return offset;
    }

    static std::string Directory(std::size_t named, std::size_t numbered)
    {
        std::string directory(12, '\0');
        AppendNumber(directory, named, 2);
        AppendNumber(directory, numbered, 2);
        return directory;
    }

    static void PutNumber(std::string& bytes, std::size_t offset, std::size_t number)
    {
        for (std::size_t i = 0; i < 4; ++i)
            bytes[offset + i] = static_cast<char>(number >> (8 * i) & 0xFF);
    }

    ModuleKind m_kind;
    std::vector<ModuleResource> m_resources;
};

} // namespace cardsong::test
