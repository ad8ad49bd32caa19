#include "platform/linux/bus/message_coding.h"

#include "platform/linux/kernel/unicode.h"

#include <limits>

namespace cardsong::bus {
namespace {

constexpr std::size_t kMostUnits = 255;              // of the names of messages and classes
constexpr std::size_t kMostBytes = 3 * kMostUnits;   // of the same as UTF-8
constexpr const char* kMessageArguments = "(ssstx)"; // device, class, message, wParam, lParam
constexpr const char* kCommandArguments = "(sst)";   // device, class, wParam

// Nothing for what is too long or no UTF-8.
std::optional<std::u16string> Name(std::string_view bytes)
{
    if (bytes.size() > kMostBytes)
        return std::nullopt;
    std::u16string name;
    while (!bytes.empty()) {
        const auto character = kernel::DecodeUtf8(bytes);
        if (!character.isValid)
            return std::nullopt;
        kernel::AppendUtf16(name, character.value);
        bytes.remove_prefix(character.bytes);
    }
    return name.size() <= kMostUnits ? std::optional(name) : std::nullopt;
}

bool IsWord(std::uint64_t wParam)
{
    return wParam <= std::numeric_limits<WPARAM>::max();
}

bool IsWord(std::int64_t lParam)
{
    return lParam >= std::numeric_limits<LPARAM>::min() && lParam <= std::numeric_limits<LPARAM>::max();
}

// What stands in `arguments`, whose type is known to be the right one.
struct Fields {
    const char* device = nullptr;
    const char* windowClass = nullptr;
    const char* name = "";
    guint64 wParam = 0;
    gint64 lParam = 0;
};

std::optional<Fields> FieldsOf(std::string_view signal, GVariant* arguments)
{
    Fields fields;
    if (signal == kMessageSignal && g_variant_is_of_type(arguments, G_VARIANT_TYPE(kMessageArguments)))
        g_variant_get(arguments, "(&s&s&stx)", &fields.device, &fields.windowClass, &fields.name, &fields.wParam,
                      &fields.lParam);
    else if (signal == kCommandSignal && g_variant_is_of_type(arguments, G_VARIANT_TYPE(kCommandArguments)))
        g_variant_get(arguments, "(&s&st)", &fields.device, &fields.windowClass, &fields.wParam);
    else
        return std::nullopt;
    return fields;
}

} // namespace

const char* SignalFor(const user::CrossingMessage& message)
{
    return message.name.empty() ? kCommandSignal : kMessageSignal;
}

GVariant* ArgumentsFor(const user::CrossingMessage& message, const std::string& device)
{
    const std::string windowClass = kernel::ToUtf8(message.windowClass);
    const auto wParam = static_cast<guint64>(message.wParam);
    if (message.name.empty())
        return g_variant_new(kCommandArguments, device.c_str(), windowClass.c_str(), wParam);
    return g_variant_new(kMessageArguments, device.c_str(), windowClass.c_str(), kernel::ToUtf8(message.name).c_str(),
                         wParam, static_cast<gint64>(message.lParam));
}

std::optional<user::CrossingMessage> MessageFrom(std::string_view signal, GVariant* arguments,
                                                 const std::string& device)
{
    const auto fields = FieldsOf(signal, arguments);
    if (!fields || device != fields->device)
        return std::nullopt;
    const auto windowClass = Name(fields->windowClass);
    const auto name = Name(fields->name);
    if (!windowClass || !name || !IsWord(std::uint64_t{ fields->wParam }) || !IsWord(std::int64_t{ fields->lParam }))
        return std::nullopt;
    const bool isCommand = signal == kCommandSignal;
    if (isCommand ? windowClass->empty() : name->empty())
        return std::nullopt;
    return user::CrossingMessage{ *windowClass, *name, static_cast<WPARAM>(fields->wParam),
                                  static_cast<LPARAM>(fields->lParam) };
}

} // namespace cardsong::bus
