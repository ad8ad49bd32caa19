// Modules loaded as data, their resources and strings.
#include "platform/linux/kernel/resource_modules.h"

#include "platform/device_tree.h"
#include "platform/linux/kernel/module_object.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace cardsong::kernel {
namespace {

constexpr char16_t kProgramModule[] = u"\\Windows\\cardsong.resources.dll";
constexpr char16_t kModuleFolder[] = u"\\Windows\\";

using Bytes = std::span<const std::byte>;

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
    if (copied > 0)
        std::memcpy(buffer, text.data(), static_cast<std::size_t>(copied) * sizeof(WCHAR));
    buffer[copied] = u'\0';
    return copied;
}
