#include "platform/linux/kernel/module_object.h"

#include "platform/linux/kernel/file_opening.h"
#include "platform/linux/kernel/host_files.h"

#include <algorithm>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

constexpr std::size_t kMaxModuleBytes = 16U << 20; // a device's largest modules hold a few megabytes of pictures
constexpr std::size_t kAlignment = 4;

DWORD ErrorOf(ResourceError error)
{
    switch (error) {
    case ResourceError::NoType: return ERROR_RESOURCE_TYPE_NOT_FOUND;
    case ResourceError::NoName: return ERROR_RESOURCE_NAME_NOT_FOUND;
    case ResourceError::NoLanguage: return ERROR_RESOURCE_LANG_NOT_FOUND;
    default: return ERROR_RESOURCE_DATA_NOT_FOUND;
    }
}

std::vector<std::byte> ReadWholeFile(int descriptor, std::size_t sizeBytes)
{
    std::vector<std::byte> contents(sizeBytes);
    std::size_t done = 0;
    while (done < sizeBytes) {
        const auto got = read(descriptor, contents.data() + done, sizeBytes - done);
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    contents.resize(done); // the file may have shrunk meanwhile
    return contents;
}

} // namespace

ModuleObject::ModuleObject(std::vector<std::byte> file) : m_file(std::move(file)), m_image(PeImage::Open(m_file)) {}

HRSRC ModuleObject::Find(const ResourceId& type, const ResourceId& name) const
{
    constexpr ResourceEntry kNothing{ ResourceError::NoResources, 0 };
    const auto found = m_image ? m_image->Find(type, name, GetUserDefaultUILanguage()) : kNothing;
    if (found.error == ResourceError::None)
        return reinterpret_cast<HRSRC>(const_cast<std::byte*>(m_file.data() + found.entryOffset));
    SetLastError(ErrorOf(found.error));
    return nullptr;
}

std::optional<std::span<const std::byte>> ModuleObject::Data(HRSRC resource) const
{
    const auto address = reinterpret_cast<ULONG_PTR>(resource);
    const auto start = reinterpret_cast<ULONG_PTR>(m_file.data());
    if (!m_image || address < start || address - start >= m_file.size())
        return std::nullopt;
    return m_image->Data(address - start);
}

std::span<const std::byte> ModuleObject::Aligned(std::span<const std::byte> data)
{
    const std::lock_guard lock(m_mutex);
    const auto* address = data.data();
    if (reinterpret_cast<ULONG_PTR>(address) % kAlignment != 0) {
        auto [copy, isNew] = m_copies.try_emplace({ address, data.size() });
        if (isNew)
            copy->second.assign(data.begin(), data.end());
        address = copy->second.data();
    }
    auto& given = m_given[address];
    given = std::max(given, data.size());
    return { address, data.size() };
}

std::size_t ModuleObject::BytesFrom(const std::byte* address)
{
    const std::lock_guard lock(m_mutex);
    const auto after = m_given.upper_bound(address);
    if (after == m_given.begin())
        return 0;
    const auto& [start, sizeBytes] = *std::prev(after);
    const auto offset = static_cast<std::size_t>(address - start);
    return offset < sizeBytes ? sizeBytes - offset : 0;
}

std::shared_ptr<ModuleObject> LoadModule(std::u16string_view path, DWORD& error)
{
    const auto opened = OpenDeviceFile(path, GENERIC_READ, OPEN_EXISTING, 0);
    if (opened.descriptor < 0) {
        error = opened.error == ERROR_PATH_NOT_FOUND ? ERROR_FILE_NOT_FOUND : opened.error;
        return nullptr;
    }
    const auto sizeBytes = SizeOf(opened.descriptor);
    std::shared_ptr<ModuleObject> module;
    if (sizeBytes == 0)
        error = ERROR_FILE_INVALID;
    else if (sizeBytes > kMaxModuleBytes)
        error = ERROR_NOT_ENOUGH_MEMORY;
    else
        module = std::make_shared<ModuleObject>(ReadWholeFile(opened.descriptor, sizeBytes));
    close(opened.descriptor);
    if (module && !module->IsModule()) {
        error = ERROR_BAD_EXE_FORMAT;
        return nullptr;
    }
    return module;
}

} // namespace cardsong::kernel
