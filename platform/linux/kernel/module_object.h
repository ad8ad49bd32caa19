// One module loaded as data: its file in memory and its resources. Knows no string table and no search order.
#pragma once

#include "platform/linux/kernel/handles.h"
#include "platform/linux/kernel/pe_image.h"

#include <map>
#include <mutex>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace cardsong::kernel {

class ModuleObject final : public KernelObject {
public:
    explicit ModuleObject(std::vector<std::byte> file);
    bool ClosesWithCloseHandle() const override { return false; }

    // Whether the file is a module at all; one that is none has no resources.
    bool IsModule() const { return m_image.has_value(); }

    // Null, with the last error graded, when there is none.
    HRSRC Find(const ResourceId& type, const ResourceId& name) const;

    // The bytes of a resource that Find answered; nothing for any other value.
    std::optional<std::span<const std::byte>> Data(HRSRC resource) const;

    // The same bytes at an address that any record may lie at: a hostile module may place them at an odd one. They live
    // as long as the module.
    std::span<const std::byte> Aligned(std::span<const std::byte> data);

    // How many bytes of a resource that Aligned gave out lie from `address` on; 0 for any other address.
    std::size_t BytesFrom(const std::byte* address);

private:
    const std::vector<std::byte> m_file;
    const std::optional<PeImage> m_image;
    std::mutex m_mutex;
    std::map<std::pair<const std::byte*, std::size_t>, std::vector<std::byte>> m_copies; // by place and size
    std::map<const std::byte*, std::size_t> m_given;
};

// Null with `error` set when the path names no module.
std::shared_ptr<ModuleObject> LoadModule(std::u16string_view devicePath, DWORD& error);

} // namespace cardsong::kernel
