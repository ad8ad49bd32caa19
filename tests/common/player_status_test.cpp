#include "common/player_status.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

PlayerStatus Playing()
{
    PlayerStatus status;
    status.request = 5;
    status.state = kPlaying;
    status.number = 2;
    status.count = 12;
    status.positionMs = 61000;
    status.lengthMs = 245000;
    status.shuffle = true;
    status.repeat = kRepeatAll;
    status.song = TEXT("02.A = B  c");
    return status;
}

const WString kText = TEXT("request=5 state=playing number=2 count=12 position_ms=61000 length_ms=245000 shuffle=1 ")
    TEXT("repeat=all song=02.A = B  c");

TEST(PlayerStatus, IsOneLineOfFields)
{
    EXPECT_TRUE(StatusText(Playing()) == kText);
    EXPECT_TRUE(StatusText({}) == TEXT("request=0 state=stopped number=0 count=0 position_ms=0 length_ms=0 shuffle=0 ")
                                      TEXT("repeat=off song="));
}

TEST(PlayerStatus, IsReadBackWithAllBlanksOfItsSong)
{
    EXPECT_EQ(ReadStatusText(kText), Playing());
    EXPECT_EQ(ReadStatusText(StatusText({})), PlayerStatus{});
}

TEST(PlayerStatus, ControlCharactersOfASongBecomeBlanks)
{
    PlayerStatus status = Playing();
    status.song = TEXT("a\nb\tc\x7F");
    EXPECT_TRUE(StatusText(status).ends_with(TEXT("song=a b c ")));
}

TEST(PlayerStatus, NoPrefixOfItIsTakenForTheWhole)
{
    const auto whole = kText.size() - Playing().song.size();
    for (std::size_t size = 0; size < whole; ++size)
        EXPECT_FALSE(ReadStatusText(WStringView(kText).substr(0, size))) << size;
    EXPECT_TRUE(ReadStatusText(WStringView(kText).substr(0, whole)));
}

TEST(PlayerStatus, OtherTextsAreNone)
{
    const auto with = [](const WString& part, const WString& other) {
        WString text = kText;
        return text.replace(text.find(part), part.size(), other);
    };
    EXPECT_FALSE(ReadStatusText(TEXT("")));
    EXPECT_FALSE(ReadStatusText(with(TEXT("request=5"), TEXT("request=-5"))));
    EXPECT_FALSE(ReadStatusText(with(TEXT("request=5"), TEXT("request=4294967296"))));
    EXPECT_FALSE(ReadStatusText(with(TEXT("playing"), TEXT("dancing"))));
    EXPECT_FALSE(ReadStatusText(with(TEXT("number=2"), TEXT("number=2x"))));
    EXPECT_FALSE(ReadStatusText(with(TEXT("number=2"), TEXT("number="))));
    EXPECT_FALSE(ReadStatusText(with(TEXT("number=2"), TEXT("number=\u0662"))));
    EXPECT_FALSE(ReadStatusText(with(TEXT("count"), TEXT("Count"))));
    EXPECT_FALSE(ReadStatusText(with(TEXT("repeat=all"), TEXT("repeat=none"))));
}

TEST(PlayerStatus, TheRegistryKeepsTheLastOne)
{
    const cardsong::test::ScratchDevice device;
    EXPECT_FALSE(LoadStatus());
    EXPECT_TRUE(StoreStatus(Playing()));
    EXPECT_EQ(LoadStatus(), Playing());
    EXPECT_TRUE(StoreStatus({}));
    EXPECT_EQ(LoadStatus(), PlayerStatus{});
}

TEST(PlayerStatus, AValueOfAnotherKindIsNone)
{
    const cardsong::test::ScratchDevice device;
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, kStatusKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr), 0);
    const std::vector<BYTE> bytes(5002, 'x'); // the API looks for a zero behind a text
    for (const DWORD sizeBytes : { 0U, 3U, 4U, 4096U, 5000U }) {
        for (const DWORD type : { REG_BINARY, REG_SZ }) {
            RegSetValueExW(key, kStatusValue, 0, type, bytes.data(), sizeBytes);
            EXPECT_FALSE(LoadStatus()) << sizeBytes;
        }
    }
    RegCloseKey(key);
}

} // namespace
