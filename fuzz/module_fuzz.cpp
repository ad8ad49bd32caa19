// Any bytes as a string module: strings and other resources of it are looked up, by number and by name.
#include "platform/ce.h"
#include "platform/linux/kernel/module_object.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

using cardsong::kernel::ModuleObject;
using cardsong::kernel::ResourceId;

// Reads every byte of a resource, so that one outside the module is noticed.
void Touch(const ModuleObject& module, const ResourceId& type, const ResourceId& name)
{
    const HRSRC found = module.Find(type, name);
    const auto data = found ? module.Data(found) : std::nullopt;
    static volatile std::byte s_sum{};
    for (const std::byte value : data.value_or(std::span<const std::byte>()))
        s_sum = s_sum ^ value;
}

// Buffers of the very size, so that a unit too many is noticed.
void LoadStrings(HINSTANCE module)
{
    constexpr int kShort = 8;
    constexpr int kLong = 512;
    for (const UINT id : { 0U, 15U, 1001U, 1003U, 1039U, 17001U, 17011U, 0xFFFFU }) {
        for (const int capacity : { 1, kShort, kLong }) {
            std::vector<WCHAR> text(static_cast<std::size_t>(capacity), TEXT('x'));
            const int units = LoadStringW(module, id, text.data(), capacity);
            if (units < 0 || units >= capacity || (units > 0 && text[static_cast<std::size_t>(units)] != 0))
                std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto module = std::make_shared<ModuleObject>(std::vector<std::byte>(bytes.begin(), bytes.end()));
    if (!module->IsModule())
        return 0;
    for (const std::uint16_t type : std::initializer_list<std::uint16_t>{ 3, 5, 6, 14 }) {
        for (const std::uint16_t name : std::initializer_list<std::uint16_t>{ 1, 63, 101 })
            Touch(*module, { type, {} }, { name, {} });
        Touch(*module, { type, {} }, { 0, u"MUSIC_PLAYER" });
    }
    Touch(*module, { 0, u"PNG" }, { 1, {} });
    const auto handle = static_cast<HMODULE>(cardsong::kernel::InsertHandle(module));
    LoadStrings(handle);
    if (FreeLibrary(handle) == FALSE)
        std::abort();
    return 0;
}
