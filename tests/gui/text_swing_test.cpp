#include "gui/text_swing.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

constexpr int kRoomPx = 145;

int TenPixelsAUnit(WStringView text)
{
    return static_cast<int>(text.size()) * 10;
}

std::vector<std::size_t> Walk(TextSwing& swing, WStringView text, int steps)
{
    std::vector<std::size_t> starts;
    for (int i = 0; i < steps; ++i) {
        swing.Step(text, kRoomPx, TenPixelsAUnit);
        starts.push_back(swing.Start());
    }
    return starts;
}

} // namespace

TEST(TextSwing, ATextThatFitsDoesNotMove)
{
    TextSwing swing;
    EXPECT_FALSE(swing.Step(WString(14, TEXT('x')), kRoomPx, TenPixelsAUnit));
    EXPECT_FALSE(swing.Step(WStringView(), kRoomPx, TenPixelsAUnit));
    EXPECT_EQ(swing.Start(), 0U);
}

TEST(TextSwing, ATextOf145PixelsFitsAndOneOf146DoesNot)
{
    TextSwing swing;
    EXPECT_FALSE(swing.Step(TEXT("abc"), kRoomPx, [](WStringView) { return 145; }));
    EXPECT_TRUE(swing.Step(TEXT("abc"), kRoomPx, [](WStringView) { return 146; }));
    EXPECT_EQ(swing.Start(), 1U);
}

TEST(TextSwing, WalksToWhereTheRestFitsAndBackToTheBeginningAgainAndAgain)
{
    TextSwing swing;
    const WString text(17, TEXT('x')); // from the fourth on, 14 units of 10 pixels fit
    EXPECT_EQ(Walk(swing, text, 13), (std::vector<std::size_t>{ 1, 2, 3, 2, 1, 0, 1, 2, 3, 2, 1, 0, 1 }));
}

TEST(TextSwing, TurnsWhereTheRestIsNarrowerThan146Pixels)
{
    TextSwing swing;
    const auto width = [](WStringView text) { return text.size() >= 3 ? 200 : text.size() == 2 ? 146 : 145; };
    std::vector<std::size_t> starts;
    for (int i = 0; i < 6; ++i) {
        swing.Step(TEXT("abcd"), kRoomPx, width);
        starts.push_back(swing.Start());
    }
    EXPECT_EQ(starts, (std::vector<std::size_t>{ 1, 2, 3, 2, 1, 0 }));
}

TEST(TextSwing, AResetBringsItBackToTheBeginningAndForward)
{
    TextSwing swing;
    const WString text(17, TEXT('x'));
    Walk(swing, text, 4); // on the way back
    swing.Reset();
    EXPECT_EQ(swing.Start(), 0U);
    EXPECT_EQ(Walk(swing, text, 3), (std::vector<std::size_t>{ 1, 2, 3 }));
}

TEST(TextSwing, ATextThatIsShorterNowBeginsAtItsBeginning)
{
    TextSwing swing;
    Walk(swing, WString(40, TEXT('x')), 20);
    EXPECT_TRUE(swing.Step(WString(18, TEXT('x')), kRoomPx, TenPixelsAUnit));
    EXPECT_EQ(swing.Start(), 0U);
    Walk(swing, WString(40, TEXT('x')), 3);
    EXPECT_TRUE(swing.Step(TEXT("fits"), kRoomPx, TenPixelsAUnit));
    EXPECT_EQ(swing.Start(), 0U);
    EXPECT_FALSE(swing.Step(TEXT("fits"), kRoomPx, TenPixelsAUnit));
}

TEST(TextSwing, ACharacterOfTwoUnitsIsNeverCut)
{
    TextSwing swing;
    // Two pairs in front of fourteen units: 180 pixels.
    const WString text = TEXT("\U0001F3B5\U0001F3B6") + WString(14, TEXT('x'));
    EXPECT_EQ(Walk(swing, text, 6), (std::vector<std::size_t>{ 2, 4, 2, 0, 2, 4 }));
}

TEST(TextSwing, HalfAPairIsACharacterOfItsOwn)
{
    TextSwing swing;
    const WCHAR halves[] = { 0xDC00, 0xD800, TEXT('a'), 0xD800 };
    const WString text = WString(halves, 4) + WString(13, TEXT('x'));
    EXPECT_EQ(Walk(swing, text, 6), (std::vector<std::size_t>{ 1, 2, 3, 2, 1, 0 }));
}

TEST(TextSwing, OneCharacterThatIsTooWideForTheBoxSwingsToItsEnd)
{
    TextSwing swing;
    const auto width = [](WStringView text) { return static_cast<int>(text.size()) * 500; };
    std::vector<std::size_t> starts;
    for (int i = 0; i < 4; ++i) {
        swing.Step(TEXT("W"), kRoomPx, width);
        starts.push_back(swing.Start());
    }
    EXPECT_EQ(starts, (std::vector<std::size_t>{ 1, 0, 1, 0 }));
}

// Whatever the widths, the start goes through the characters one by one, from the first to the first whose rest fits
// and back.
TEST(TextSwing, GoesThroughTheSameCharactersThereAndBackOverWholeCycles)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        const auto units = std::uniform_int_distribution<std::size_t>(1, 100)(random);
        WString text;
        std::vector<std::size_t> characters;
        std::vector<int> widthOf(units + 1);
        while (text.size() < units) {
            characters.push_back(text.size());
            if (random() % 4 == 0)
                text += TEXT("\U00020000");
            text += static_cast<WCHAR>(TEXT('a') + random() % 26);
            if ((text[characters.back()] & 0xFC00) == 0xD800)
                characters.push_back(text.size() - 1);
        }
        widthOf.resize(text.size());
        for (int& width : widthOf)
            width = static_cast<int>(random() % 20);
        const auto widthPx = [&](WStringView part) {
            int sum = 0;
            for (std::size_t i = text.size() - part.size(); i < text.size(); ++i)
                sum += widthOf[i];
            return sum;
        };
        characters.push_back(text.size());
        std::size_t turn = 0; // the plain model: which character the swing turns at
        while (widthPx(WStringView(text).substr(characters[turn])) > kRoomPx)
            ++turn;
        TextSwing swing;
        std::size_t at = 0;
        bool forward = true;
        for (int step = 0; step < 250; ++step) {
            ASSERT_EQ(swing.Step(text, kRoomPx, widthPx), turn != 0) << round;
            if (turn != 0) {
                at = forward ? at + 1 : at - 1;
                forward = at == turn ? false : at == 0 ? true : forward;
            }
            ASSERT_EQ(swing.Start(), characters[at]) << round << ", step " << step;
        }
    }
}
