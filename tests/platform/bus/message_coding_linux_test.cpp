#include "platform/linux/bus/message_coding.h"

#include <gtest/gtest.h>

namespace cardsong::bus {
namespace {

using user::CrossingMessage;

constexpr const char* kDevice = "12-34";

struct UnrefVariant {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Arguments = std::unique_ptr<GVariant, UnrefVariant>;

Arguments Own(GVariant* floating)
{
    return Arguments(g_variant_ref_sink(floating));
}

std::string Printed(const CrossingMessage& message)
{
    const Arguments arguments = Own(ArgumentsFor(message, kDevice));
    const std::unique_ptr<char, void (*)(void*)> text(g_variant_print(arguments.get(), FALSE), g_free);
    return std::string(SignalFor(message)) + " " + text.get();
}

std::optional<CrossingMessage> Read(const char* signal, const char* text)
{
    GVariant* const parsed = g_variant_parse(nullptr, text, nullptr, nullptr, nullptr);
    if (parsed == nullptr) {
        ADD_FAILURE() << text;
        return std::nullopt;
    }
    const Arguments arguments = Own(parsed);
    return MessageFrom(signal, arguments.get(), kDevice);
}

TEST(MessageCoding, ARegisteredMessageTravelsByName)
{
    EXPECT_EQ(Printed({ u"", u"Lyrics Setting Change", 1, -2 }),
              "Message ('12-34', '', 'Lyrics Setting Change', 1, -2)");
    EXPECT_EQ(Printed({ u"audioplayer", u"A", 0, 0 }), "Message ('12-34', 'audioplayer', 'A', 0, 0)");
}

TEST(MessageCoding, ACommandTravelsByNumber)
{
    EXPECT_EQ(Printed({ u"audioplayer", u"", 258, 0 }), "Command ('12-34', 'audioplayer', 258)");
}

TEST(MessageCoding, WhatIsWrittenIsReadBack)
{
    for (const CrossingMessage& message :
         { CrossingMessage{ u"", u"\u6B4C\u66F2 \U0001F3B5", 0xFFFF'FFFF, -1 }, CrossingMessage{ u"a", u"b", 0, 5 },
           CrossingMessage{ u"audioplayer", u"", 0x10104, 0 } }) {
        const Arguments arguments = Own(ArgumentsFor(message, kDevice));
        EXPECT_EQ(MessageFrom(SignalFor(message), arguments.get(), kDevice), message);
    }
}

TEST(MessageCoding, TheLargestNumbersArrive)
{
    if constexpr (sizeof(WPARAM) == 8) {
        const auto message = Read("Message", "('12-34','','n',uint64 18446744073709551615,int64 -9223372036854775808)");
        ASSERT_TRUE(message);
        EXPECT_EQ(message->wParam, std::numeric_limits<WPARAM>::max());
        EXPECT_EQ(message->lParam, std::numeric_limits<LPARAM>::min());
    } else {
        EXPECT_FALSE(Read("Message", "('12-34','','n',uint64 4294967296,int64 0)"));
        EXPECT_FALSE(Read("Message", "('12-34','','n',uint64 0,int64 2147483648)"));
    }
}

TEST(MessageCoding, ArgumentsOfOtherTypesAreNoMessage)
{
    for (const char* text : { "()", "('12-34',)", "('12-34','','n')", "('12-34','','n',1,2)",
                              "('12-34','','n',uint64 1,int64 2,'more')", "(uint64 1,'','n',uint64 1,int64 2)" }) {
        EXPECT_FALSE(Read("Message", text)) << text;
        EXPECT_FALSE(Read("Command", text)) << text;
    }
    EXPECT_FALSE(Read("Message", "('12-34','w',uint64 258)"));
    EXPECT_FALSE(Read("Command", "('12-34','','n',uint64 1,int64 2)"));
    EXPECT_FALSE(Read("Other", "('12-34','','n',uint64 1,int64 2)"));
}

TEST(MessageCoding, AnotherDeviceIsNotMeant)
{
    EXPECT_FALSE(Read("Message", "('12-345','','n',uint64 1,int64 2)"));
    EXPECT_FALSE(Read("Command", "('','w',uint64 258)"));
}

TEST(MessageCoding, ACommandIsForOneWindowAndAMessageHasAName)
{
    EXPECT_FALSE(Read("Command", "('12-34','',uint64 258)"));
    EXPECT_FALSE(Read("Message", "('12-34','','',uint64 1,int64 2)"));
}

TEST(MessageCoding, NamesOfMoreThan255UnitsAreNone)
{
    const auto read = [](std::size_t units) {
        const std::string text = "('12-34','','" + std::string(units, 'n') + "',uint64 1,int64 2)";
        return Read("Message", text.c_str());
    };
    ASSERT_TRUE(read(255));
    EXPECT_EQ(read(255)->name, std::u16string(255, u'n'));
    EXPECT_FALSE(read(256));
    EXPECT_FALSE(read(1'000'000));
    EXPECT_FALSE(Read("Command", ("('12-34','" + std::string(256, 'w') + "',uint64 258)").c_str()));
}

} // namespace
} // namespace cardsong::bus
