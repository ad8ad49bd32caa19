// Modules loaded as data, their resources and strings.
#include "platform/linux/kernel/resource_modules.h"

#include "platform/linux/kernel/device_tree.h"
#include "platform/linux/kernel/file_opening.h"
#include "platform/linux/kernel/handles.h"
#include "platform/linux/kernel/pe_image.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <unistd.h>
#include <vector>

namespace cardsong::kernel {
namespace {

constexpr std::size_t kMaxModuleBytes = 16U << 20; // a device's largest modules hold a few megabytes of pictures
constexpr char16_t kProgramModule[] = u"\\Windows\\cardsong.resources.dll";

using Bytes = std::span<const std::byte>;

class ModuleObject final : public KernelObject {
public:
    explicit ModuleObject(std::vector<std::byte> file) : m_file(std::move(file)), m_image(PeImage::Open(m_file)) {}
    bool ClosesWithCloseHandle() const override { return false; }

    bool IsModule() const { return m_image.has_value(); }

    HRSRC Find(const ResourceId& type, const ResourceId& name) const
    {
        const auto found = m_image ? m_image->Find(type, name, GetUserDefaultUILanguage()) : NoImage();
        if (found.error == ResourceError::None)
            return reinterpret_cast<HRSRC>(const_cast<std::byte*>(m_file.data() + found.entryOffset));
        SetLastError(ErrorOf(found.error));
        return nullptr;
    }

    // The bytes of a resource that Find answered; nothing for any other value.
    std::optional<Bytes> Data(HRSRC resource) const
    {
        const auto address = reinterpret_cast<ULONG_PTR>(resource);
        const auto start = reinterpret_cast<ULONG_PTR>(m_file.data());
        if (!m_image || address < start || address - start >= m_file.size())
            return std::nullopt;
        return m_image->Data(address - start);
    }

    // The same bytes at an address that any record may lie at; a hostile module may place them at an odd one.
    Bytes Aligned(Bytes data)
    {
        const std::lock_guard lock(m_mutex);
        const auto* address = data.data();
        if (reinterpret_cast<ULONG_PTR>(address) % kAlignment != 0) {
            auto& copy = m_copies[data.data()];
            if (copy.size() < data.size())
                copy.assign(data.begin(), data.end());
            address = copy.data();
        }
        m_given[address] = data.size();
        return { address, data.size() };
    }

    std::size_t BytesFrom(const std::byte* address)
    {
        const std::lock_guard lock(m_mutex);
        const auto after = m_given.upper_bound(address);
        if (after == m_given.begin())
            return 0;
        const auto& [start, sizeBytes] = *std::prev(after);
        const auto offset = static_cast<std::size_t>(address - start);
        return offset < sizeBytes ? sizeBytes - offset : 0;
    }

private:
    static constexpr std::size_t kAlignment = 4;

    static ResourceEntry NoImage() { return { ResourceError::NoResources, 0 }; }
    static DWORD ErrorOf(ResourceError error)
    {
        switch (error) {
        case ResourceError::NoType: return ERROR_RESOURCE_TYPE_NOT_FOUND;
        case ResourceError::NoName: return ERROR_RESOURCE_NAME_NOT_FOUND;
        case ResourceError::NoLanguage: return ERROR_RESOURCE_LANG_NOT_FOUND;
        default: return ERROR_RESOURCE_DATA_NOT_FOUND;
        }
    }

    const std::vector<std::byte> m_file;
    const std::optional<PeImage> m_image;
    std::mutex m_mutex;
    std::map<const std::byte*, std::vector<std::byte>> m_copies;
    std::map<const std::byte*, std::size_t> m_given;
};

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

// Null with `error` set when the path names no module.
std::shared_ptr<ModuleObject> LoadModule(std::u16string_view path, DWORD& error)
{
    const auto opened = OpenDeviceFile(path, GENERIC_READ, OPEN_EXISTING, 0);
    if (opened.descriptor < 0) {
        error = opened.error == ERROR_PATH_NOT_FOUND ? ERROR_FILE_NOT_FOUND : opened.error;
        return nullptr;
    }
    const auto sizeBytes = opened.facts.sizeBytes;
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

std::mutex g_programMutex;
char g_programInstance; // only its address counts

std::shared_ptr<ModuleObject>& ProgramModule()
{
    static auto* const s_module = new std::shared_ptr<ModuleObject>;
    return *s_module;
}

std::vector<std::weak_ptr<ModuleObject>>& KnownModules()
{
    static auto* const s_modules = new std::vector<std::weak_ptr<ModuleObject>>;
    return *s_modules;
}

void Remember(const std::shared_ptr<ModuleObject>& module)
{
    std::erase_if(KnownModules(), [](const auto& known) { return known.expired(); });
    KnownModules().push_back(module);
}

std::shared_ptr<ModuleObject> TheProgram()
{
    const std::lock_guard lock(g_programMutex);
    auto& program = ProgramModule();
    if (!program) {
        DWORD ignored = ERROR_SUCCESS;
        program = LoadModule(kProgramModule, ignored);
        if (!program)
            program = std::make_shared<ModuleObject>(std::vector<std::byte>()); // a program without resources
        Remember(program);
    }
    return program;
}

std::shared_ptr<ModuleObject> ModuleOf(HINSTANCE instance)
{
    return !instance || instance == ProgramInstance() ? TheProgram() : ObjectAs<ModuleObject>(instance);
}

// A small number in place of a pointer is an id; so is the text "#" and digits.
ResourceId IdOf(LPCWSTR name)
{
    const auto value = reinterpret_cast<ULONG_PTR>(name);
    if (value <= 0xFFFF)
        return { static_cast<std::uint16_t>(value), {} };
    if (*name == u'#')
        return { static_cast<std::uint16_t>(_wtol(name + 1)), {} };
    return { 0, name };
}

constexpr char16_t kModuleFolder[] = u"\\Windows\\";

std::u16string ModulePath(std::u16string_view name)
{
    const bool isBare = name.find_first_of(u"\\/") == std::u16string_view::npos;
    std::u16string path = isBare ? std::u16string(kModuleFolder) : std::u16string();
    path += name;
    if (name.find(u'.', name.find_last_of(u"\\/") + 1) == std::u16string_view::npos)
        path += u".dll";
    return path;
}

// The string `id` of a block of sixteen, each its length and its units; empty when the block ends before it.
Bytes StringInBlock(Bytes block, UINT id)
{
    for (UINT i = 0;; ++i) {
        if (block.size() < sizeof(WORD))
            return {};
        WORD units = 0;
        std::memcpy(&units, block.data(), sizeof units);
        block = block.subspan(sizeof units);
        const std::size_t sizeBytes = std::size_t{ units } * sizeof(WCHAR);
        if (block.size() < sizeBytes)
            return {};
        if (i == id % 16)
            return block.first(sizeBytes);
        block = block.subspan(sizeBytes);
    }
}

} // namespace

HINSTANCE ProgramInstance()
{
    return reinterpret_cast<HINSTANCE>(&g_programInstance);
}

void ForgetProgramResources()
{
    const std::lock_guard lock(g_programMutex);
    ProgramModule() = nullptr;
}

std::size_t ResourceBytesFrom(const void* data)
{
    const std::lock_guard lock(g_programMutex);
    for (const auto& known : KnownModules()) {
        const auto module = known.lock();
        if (const auto bytes = module ? module->BytesFrom(static_cast<const std::byte*>(data)) : 0)
            return bytes;
    }
    return 0;
}

} // namespace cardsong::kernel

using namespace cardsong::kernel;

// Only as data: no code of a module ever runs here.
HMODULE LoadLibraryExW(LPCWSTR name, HANDLE, DWORD flags)
{
    if (!name || !*name || (flags & LOAD_LIBRARY_AS_DATAFILE) == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    DWORD error = ERROR_SUCCESS;
    const auto module = LoadModule(ModulePath(name), error);
    if (!module) {
        SetLastError(error);
        return nullptr;
    }
    {
        const std::lock_guard lock(g_programMutex);
        Remember(module);
    }
    return static_cast<HMODULE>(InsertHandle(module));
}

BOOL FreeLibrary(HMODULE module)
{
    return CloseAs<ModuleObject>(module) ? TRUE : FALSE;
}

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type)
{
    const auto object = ModuleOf(module);
    return object ? object->Find(IdOf(type), IdOf(name)) : nullptr;
}

HGLOBAL LoadResource(HMODULE module, HRSRC resource)
{
    const auto object = ModuleOf(module);
    const auto data = object ? object->Data(resource) : std::nullopt;
    if (!data) {
        SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
        return nullptr;
    }
    return const_cast<std::byte*>(object->Aligned(*data).data());
}

LPVOID LockResource(HGLOBAL resource)
{
    return resource;
}

DWORD SizeofResource(HMODULE module, HRSRC resource)
{
    const auto object = ModuleOf(module);
    const auto data = object ? object->Data(resource) : std::nullopt;
    if (!data)
        SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
    return data ? static_cast<DWORD>(data->size()) : 0;
}

int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int bufferUnits)
{
    const auto object = buffer ? ModuleOf(module) : nullptr;
    if (!object || bufferUnits < 0)
        return 0;
    const UINT block = ((id & 0xFFFF) >> 4) + 1;
    const auto resource = object->Find(IdOf(RT_STRING), IdOf(MAKEINTRESOURCEW(static_cast<int>(block))));
    const auto data = resource ? object->Data(resource) : std::nullopt;
    if (!data)
        return 0;
    const auto text = StringInBlock(object->Aligned(*data), id);
    const auto units = static_cast<int>(text.size() / sizeof(WCHAR));
    if (bufferUnits == 0) { // the API's way to ask for a pointer into the module
        const void* const pointer = text.data();
        std::memcpy(static_cast<void*>(buffer), &pointer, sizeof pointer);
        return units;
    }
    const int copied = std::min(units, bufferUnits - 1);
    std::memcpy(buffer, text.data(), static_cast<std::size_t>(copied) * sizeof(WCHAR));
    buffer[copied] = u'\0';
    return copied;
}
