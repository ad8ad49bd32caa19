#include "controls/seek_slider.h"

#include "tests/gui/skin_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <random>

using namespace cardsong::test;

namespace {

constexpr UINT kId = 300;
constexpr int kWidth = 200;
constexpr int kHeight = 10;
constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();
constexpr std::uint16_t kGray565 = 0x10 << 11 | 0x20 << 5 | 0x10; // 0x80 of each

// A value of 24 significant bits, as a float has them, times a power of two; 0 when `bits` is.
struct Rounded {
    long long bits = 0;
    int exponent = 0;

    // Towards zero; anything as large as two to the power of 40 is that.
    long long Truncated() const
    {
        if (exponent >= 0)
            return exponent > 16 ? 1LL << 40 : bits << exponent;
        return exponent < -24 ? 0 : bits >> -exponent;
    }
};

// The quotient of whole numbers, not negative and below two to the power of 48, to the nearest value, ties to even.
Rounded Divide(long long dividend, long long divisor, int exponent = 0)
{
    if (dividend == 0)
        return {};
    for (; dividend < divisor << 23; --exponent)
        dividend <<= 1;
    for (; dividend >= divisor << 24; ++exponent)
        divisor <<= 1;
    long long bits = dividend / divisor;
    const long long twice = dividend % divisor * 2;
    if (twice > divisor || (twice == divisor && bits % 2 != 0))
        ++bits;
    return { bits, exponent };
}

// What the slider promises, in whole numbers that never overflow.
struct ExactSlider {
    long long minimum = 0, maximum = 100, step = 1, position = 0;

    void SetRange(long long a, long long b)
    {
        minimum = std::min(a, b);
        maximum = std::max(a, b);
    }
    int SetPos(long long to)
    {
        if (to < minimum || to > maximum)
            return 0;
        position = to;
        return 1;
    }
    int SetStep(long long to)
    {
        step = to > 0 ? to : step;
        return to > 0 ? 1 : 0;
    }
    int OffsetPos(long long delta)
    {
        const long long wanted = position + delta;
        position = std::max<long long>(std::min(wanted, maximum), kLowest);
        return position == wanted ? 1 : 0;
    }
    long long Tap(long long x, long long widthPx)
    {
        const Rounded size = Divide(maximum - minimum, 1);
        const Rounded product = Divide(size.bits * x, 1, size.exponent);
        const long long asked =
            std::min<long long>(Divide(product.bits, widthPx, product.exponent).Truncated(), kHighest);
        OffsetPos(asked - position);
        return asked;
    }
    long long PlayedPx(long long widthPx) const
    {
        if (position <= 0 || maximum == minimum)
            return 0;
        const Rounded size = Divide(maximum - minimum, 1);
        const Rounded place = Divide(position, 1);
        const Rounded fraction = Divide(place.bits, size.bits, place.exponent - size.exponent);
        return std::min(Divide(fraction.bits * widthPx, 1, fraction.exponent).Truncated(), widthPx);
    }
};

// Any int, those near the ends and near zero more often.
int AnyInt(std::mt19937& random)
{
    const auto any = static_cast<std::int32_t>(random());
    switch (random() % 4) {
    case 0: return any;
    case 1: return any % 1000;
    case 2: return kHighest - std::abs(any % 3);
    default: return kLowest + std::abs(any % 3);
    }
}

class SeekSliderTest : public testing::Test {
protected:
    SeekSliderTest()
    {
        m_child = CreateWindowExW(0, TEXT("static"), TEXT(""), WS_CHILD | WS_VISIBLE, 10, 100, kWidth, kHeight,
                                  m_parent.Get(), nullptr, nullptr, nullptr);
        // 100 x 5, stretched to twice its size: the left half red, the right half green.
        GifImage played{ .width = 100, .height = 5 };
        for (int i = 0; i < 500; ++i)
            played.indices.push_back(i % 100 < 50 ? 1 : 2);
        m_skin.Device().WriteFile("user/scratch/full.gif",
                                  GifBuilder().Screen(100, 5, { kBlack, kRed, kGreen, kBlue }).Image(played).Text());
        m_full = m_skin.Device().Path(TEXT("full.gif"));
        m_normal = m_skin.Plain("normal.gif", 50, 5, kBlue);
    }
    ~SeekSliderTest() override { m_slider.reset(); }

    SeekSlider& Make()
    {
        m_slider = std::make_unique<SeekSlider>(m_parent.Get(), kId, m_full.c_str(), m_normal.c_str());
        ParentWindow::Pump();
        return *m_slider;
    }
    SeekSlider& MakeWithoutImages()
    {
        m_slider = std::make_unique<SeekSlider>(m_parent.Get(), kId, nullptr, TEXT("\\missing.gif"));
        ParentWindow::Pump();
        return *m_slider;
    }
    // The colour of the slider on the screen.
    std::uint16_t At(int x, int y = 5)
    {
        ParentWindow::Pump();
        const HDC context = GetDC(m_child);
        const std::uint16_t pixel = Pixel565(context, x, y);
        ReleaseDC(m_child, context);
        return pixel;
    }
    // The position that a tap asks for; -1 when it asks for none.
    long long Tap(int x)
    {
        m_parent.seen.clear();
        EXPECT_EQ(SendMessageW(m_child, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 3)), 1);
        EXPECT_TRUE(m_parent.seen.empty()); // posted, not sent
        ParentWindow::Pump();
        if (m_parent.seen.empty())
            return -1;
        EXPECT_EQ(m_parent.seen.size(), 1U);
        EXPECT_EQ(m_parent.seen[0].message, WM_USER + 111U);
        EXPECT_EQ(m_parent.seen[0].message, 1135U);
        EXPECT_EQ(m_parent.seen[0].wParam, kId);
        return m_parent.seen[0].lParam;
    }
    // Columns of the bar without images that show as played.
    int PlayedPx()
    {
        InvalidateRect(m_child, nullptr, FALSE);
        ParentWindow::Pump();
        const HDC context = GetDC(m_child);
        int played = 0;
        while (played < kWidth && Pixel565(context, played, 5) == kGray565)
            ++played;
        ReleaseDC(m_child, context);
        return played;
    }
    bool NeedsPaint() { return GetUpdateRect(m_child, nullptr, FALSE) != FALSE; }

    SkinDevice m_skin;
    ParentWindow m_parent;
    HWND m_child = nullptr;
    WString m_full, m_normal;
    std::unique_ptr<SeekSlider> m_slider;
};

} // namespace

// ---- range and position ----

TEST_F(SeekSliderTest, StartsAtZeroOfZeroToHundred)
{
    const SeekSlider& slider = Make();
    int minimum = -1;
    int maximum = -1;
    slider.GetRange(&minimum, &maximum);
    EXPECT_EQ(minimum, 0);
    EXPECT_EQ(maximum, 100);
    EXPECT_EQ(slider.GetPos(), 0);
}

TEST_F(SeekSliderTest, ARangeIsTakenInEitherOrder)
{
    SeekSlider& slider = Make();
    int minimum = -1;
    int maximum = -1;
    slider.SetRange(100, 0);
    slider.GetRange(&minimum, &maximum);
    EXPECT_EQ(minimum, 0);
    EXPECT_EQ(maximum, 100);
    slider.SetRange(-5, 7);
    slider.GetRange(&minimum, &maximum);
    EXPECT_EQ(minimum, -5);
    EXPECT_EQ(maximum, 7);
}

TEST_F(SeekSliderTest, SetPosTakesBothBoundsAndNothingOutside)
{
    SeekSlider& slider = Make();
    slider.SetRange(10, 20);
    EXPECT_EQ(slider.SetPos(10), 1);
    EXPECT_EQ(slider.GetPos(), 10);
    EXPECT_EQ(slider.SetPos(20), 1);
    EXPECT_EQ(slider.GetPos(), 20);
    EXPECT_EQ(slider.SetPos(21), 0);
    EXPECT_EQ(slider.SetPos(9), 0);
    EXPECT_EQ(slider.GetPos(), 20);
}

TEST_F(SeekSliderTest, APositionOutOfRangeLeavesTheBarAsItWas)
{
    SeekSlider& slider = Make();
    slider.SetPos(50);
    EXPECT_EQ(At(99), kRed565);
    EXPECT_EQ(slider.SetPos(101), 0);
    EXPECT_FALSE(NeedsPaint());
    EXPECT_EQ(At(99), kRed565);
    EXPECT_EQ(slider.SetPos(51), 1);
    EXPECT_TRUE(NeedsPaint());
}

TEST_F(SeekSliderTest, StepsMustBeAboveZero)
{
    SeekSlider& slider = Make();
    EXPECT_EQ(slider.StepIt(), 1);
    EXPECT_EQ(slider.GetPos(), 1);
    EXPECT_EQ(slider.SetStep(0), 0);
    EXPECT_EQ(slider.SetStep(-3), 0);
    slider.StepIt();
    EXPECT_EQ(slider.GetPos(), 2);
    EXPECT_EQ(slider.SetStep(7), 1);
    slider.StepIt();
    EXPECT_EQ(slider.GetPos(), 9);
    EXPECT_EQ(slider.SetStep(1), 1);
    slider.StepIt();
    EXPECT_EQ(slider.GetPos(), 10);
}

TEST_F(SeekSliderTest, AStepPastTheMaximumStopsThere)
{
    SeekSlider& slider = Make();
    slider.SetStep(60);
    EXPECT_EQ(slider.StepIt(), 1);
    ParentWindow::Pump();
    EXPECT_EQ(slider.StepIt(), 0);
    EXPECT_EQ(slider.GetPos(), 100);
    EXPECT_TRUE(NeedsPaint());
}

TEST_F(SeekSliderTest, AStepOntoTheMaximumIsNotClamped)
{
    SeekSlider& slider = Make();
    EXPECT_EQ(slider.OffsetPos(100), 1);
    EXPECT_EQ(slider.GetPos(), 100);
    EXPECT_EQ(slider.OffsetPos(1), 0);
    EXPECT_EQ(slider.GetPos(), 100);
}

TEST_F(SeekSliderTest, OffsetsAreClampedAtTheMaximumOnly)
{
    SeekSlider& slider = Make();
    EXPECT_EQ(slider.OffsetPos(-5), 1);
    EXPECT_EQ(slider.GetPos(), -5);
    EXPECT_EQ(slider.OffsetPos(2147483647), 0);
    EXPECT_EQ(slider.GetPos(), 100);
}

TEST_F(SeekSliderTest, AnOffsetBelowTheLowestIntStopsThere)
{
    SeekSlider& slider = Make();
    slider.SetRange(kHighest, kLowest);
    EXPECT_EQ(slider.SetPos(kLowest), 1);
    EXPECT_EQ(slider.OffsetPos(-1), 0);
    EXPECT_EQ(slider.GetPos(), kLowest);
    EXPECT_EQ(slider.OffsetPos(0), 1);
    EXPECT_EQ(slider.OffsetPos(1), 1);
    EXPECT_EQ(slider.OffsetPos(kLowest), 0);
    EXPECT_EQ(slider.GetPos(), kLowest);
    EXPECT_EQ(slider.OffsetPos(kHighest), 1);
    EXPECT_EQ(slider.GetPos(), -1);
}

TEST_F(SeekSliderTest, TheLongestStepStopsAtTheHighestInt)
{
    SeekSlider& slider = Make();
    slider.SetRange(kLowest, kHighest);
    EXPECT_EQ(slider.SetStep(kHighest), 1);
    EXPECT_EQ(slider.StepIt(), 1);
    EXPECT_EQ(slider.GetPos(), kHighest);
    EXPECT_EQ(slider.StepIt(), 0);
    EXPECT_EQ(slider.GetPos(), kHighest);
}

// ---- taps ----

TEST_F(SeekSliderTest, ATapAsksForThePositionUnderIt)
{
    SeekSlider& slider = Make();
    slider.SetRange(0, 400);
    EXPECT_EQ(Tap(50), 100);
    EXPECT_EQ(slider.GetPos(), 100);
    EXPECT_EQ(Tap(199), 398);
    EXPECT_EQ(slider.GetPos(), 398);
    EXPECT_EQ(Tap(20), 40);
    EXPECT_EQ(slider.GetPos(), 40);
}

TEST_F(SeekSliderTest, ATapAtTheRightEdgeAsksForTheMaximumAndAtTheLeftForZero)
{
    SeekSlider& slider = Make();
    slider.SetRange(0, 400);
    EXPECT_EQ(Tap(kWidth), 400);
    EXPECT_EQ(slider.GetPos(), 400);
    EXPECT_EQ(Tap(0), 0);
    EXPECT_EQ(slider.GetPos(), 0);
}

TEST_F(SeekSliderTest, ThePositionOfATapIsCutToAWholeNumber)
{
    SeekSlider& slider = Make();
    slider.SetRange(0, 10);
    EXPECT_EQ(Tap(39), 1); // 1.95
}

TEST_F(SeekSliderTest, ATapCountsFromZeroWhateverTheMinimum)
{
    SeekSlider& slider = Make();
    slider.SetRange(100, 300);
    EXPECT_EQ(Tap(100), 100);
    EXPECT_EQ(slider.GetPos(), 100);
}

TEST_F(SeekSliderTest, ATapBeyondTheEdgeAsksForMoreThanItShows)
{
    SeekSlider& slider = Make();
    EXPECT_EQ(Tap(400), 200);
    EXPECT_EQ(slider.GetPos(), 100);
}

TEST_F(SeekSliderTest, ATapRepaints)
{
    Make();
    SendMessageW(m_child, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(50, 3));
    EXPECT_TRUE(NeedsPaint());
}

TEST_F(SeekSliderTest, ItTakesTapsAlthoughItIsAStaticControl)
{
    Make();
    EXPECT_EQ(SendMessageW(m_child, WM_NCHITTEST, 0, MAKELPARAM(15, 103)), HTCLIENT);
}

TEST_F(SeekSliderTest, WithEqualBoundsItShowsAndAsksForZero)
{
    SeekSlider& slider = Make();
    slider.SetRange(0, 0);
    EXPECT_EQ(slider.SetPos(0), 1);
    EXPECT_EQ(At(0), kBlue565);
    EXPECT_EQ(Tap(100), 0);
}

TEST_F(SeekSliderTest, WithoutWidthATapAsksForNothing)
{
    MoveWindow(m_child, 10, 100, 0, kHeight, FALSE);
    SeekSlider& slider = Make();
    slider.SetPos(30);
    EXPECT_EQ(Tap(0), -1);
    EXPECT_EQ(slider.GetPos(), 30);
}

TEST_F(SeekSliderTest, ATapOnTheWidestRangeAsksForNoMoreThanTheHighestInt)
{
    SeekSlider& slider = Make();
    slider.SetRange(kLowest, kHighest);
    slider.SetPos(kLowest);
    EXPECT_EQ(Tap(50), 1073741824); // a quarter of 2 to the power of 32
    EXPECT_EQ(slider.GetPos(), 1073741824);
    slider.SetPos(kLowest);
    EXPECT_EQ(Tap(99), 2126008832); // the nearest that a float of 24 bits holds
    EXPECT_EQ(Tap(100), kHighest);
    EXPECT_EQ(slider.GetPos(), kHighest);
    EXPECT_EQ(Tap(65535), kHighest);
    slider.SetPos(kLowest);
    EXPECT_EQ(Tap(0), 0);
    EXPECT_EQ(slider.GetPos(), 0);
}

TEST_F(SeekSliderTest, TheSizeOfALargeRangeIsRoundedOnce)
{
    SeekSlider& slider = Make();
    slider.SetRange(1, 16777217); // 16777216 long; the maximum alone does not fit in the 24 bits of a float
    EXPECT_EQ(Tap(kWidth), 16777216);
}

TEST_F(SeekSliderTest, AtARangeBelowZeroATapStopsAtTheMaximum)
{
    SeekSlider& slider = Make();
    slider.SetRange(kLowest, -5);
    EXPECT_EQ(Tap(1), 10737418);
    EXPECT_EQ(slider.GetPos(), -5);
}

TEST_F(SeekSliderTest, AnyRangePositionAndTapGiveWhatExactArithmeticGives)
{
    SeekSlider& slider = MakeWithoutImages();
    std::mt19937 random(20240518);
    ExactSlider exact;
    for (int round = 0; round < 3000; ++round) {
        const int a = AnyInt(random);
        const int b = random() % 8 == 0 ? a : AnyInt(random);
        switch (random() % 6) {
        case 0:
            slider.SetRange(a, b);
            exact.SetRange(a, b);
            break;
        case 1: ASSERT_EQ(slider.SetPos(a), exact.SetPos(a)) << "round " << round; break;
        case 2: ASSERT_EQ(slider.OffsetPos(a), exact.OffsetPos(a)) << "round " << round; break;
        case 3: ASSERT_EQ(slider.SetStep(a), exact.SetStep(a)) << "round " << round; break;
        case 4: ASSERT_EQ(slider.StepIt(), exact.OffsetPos(exact.step)) << "round " << round; break;
        default: {
            const int x = static_cast<int>(random() % 3 == 0 ? random() % 65536 : random() % (kWidth + 1));
            ASSERT_EQ(Tap(x), exact.Tap(x, kWidth)) << "round " << round << ", at " << x;
        }
        }
        int minimum = 0;
        int maximum = 0;
        slider.GetRange(&minimum, &maximum);
        ASSERT_EQ(minimum, exact.minimum) << "round " << round;
        ASSERT_EQ(maximum, exact.maximum) << "round " << round;
        ASSERT_EQ(slider.GetPos(), exact.position) << "round " << round;
        if (round % 10 == 0) {
            ASSERT_EQ(PlayedPx(), exact.PlayedPx(kWidth)) << "round " << round;
        }
    }
}

// ---- painting ----

TEST_F(SeekSliderTest, AtTheStartOnlyTheBackgroundShows)
{
    Make();
    EXPECT_EQ(At(0, 0), kBlue565);
    EXPECT_EQ(At(kWidth - 1, kHeight - 1), kBlue565);
}

TEST_F(SeekSliderTest, ThePlayedPartIsTheLeftPartOfThePlayedImage)
{
    SeekSlider& slider = Make();
    slider.SetPos(25); // 50 pixels wide, out of the image's left 25 columns: all red
    EXPECT_EQ(At(0, 0), kRed565);
    EXPECT_EQ(At(49, kHeight - 1), kRed565);
    EXPECT_EQ(At(50), kBlue565);
    slider.SetPos(75); // 150 pixels wide, red up to 100
    EXPECT_EQ(At(90), kRed565);
    EXPECT_EQ(At(110), kGreen565);
    EXPECT_EQ(At(149), kGreen565);
    EXPECT_EQ(At(150), kBlue565);
}

TEST_F(SeekSliderTest, AtTheMaximumThePlayedImageFillsTheBar)
{
    SeekSlider& slider = Make();
    slider.SetPos(100);
    EXPECT_EQ(At(99), kRed565);
    EXPECT_EQ(At(100), kGreen565);
    EXPECT_EQ(At(kWidth - 1), kGreen565);
}

TEST_F(SeekSliderTest, ThePlayedPartDoesNotTakeTheMinimumOff)
{
    SeekSlider& slider = Make();
    slider.SetRange(50, 250);
    slider.SetPos(50); // a quarter, not nothing
    EXPECT_EQ(At(49), kRed565);
    EXPECT_EQ(At(50), kBlue565);
    slider.SetPos(250); // more than all: all
    EXPECT_EQ(At(kWidth - 1), kGreen565);
}

TEST_F(SeekSliderTest, ANegativePositionShowsAsNothingPlayed)
{
    SeekSlider& slider = Make();
    slider.OffsetPos(-50);
    EXPECT_EQ(At(0), kBlue565);
}

TEST_F(SeekSliderTest, WithoutImagesTheBarIsWhiteAndGray)
{
    SeekSlider& slider = MakeWithoutImages();
    slider.SetPos(25);
    EXPECT_EQ(At(0, 0), kGray565);
    EXPECT_EQ(At(49, kHeight - 1), kGray565);
    EXPECT_EQ(At(50), kWhite565);
    EXPECT_EQ(At(kWidth - 1, kHeight - 1), kWhite565);
}

TEST_F(SeekSliderTest, WithOneImageMissingTheBarIsWhiteAndGrayToo)
{
    m_slider = std::make_unique<SeekSlider>(m_parent.Get(), kId, nullptr, m_normal.c_str());
    InvalidateRect(m_child, nullptr, FALSE);
    EXPECT_EQ(At(5), kWhite565);
    m_slider = std::make_unique<SeekSlider>(m_parent.Get(), kId, m_full.c_str(), nullptr);
    InvalidateRect(m_child, nullptr, FALSE);
    EXPECT_EQ(At(5), kWhite565);
}

TEST_F(SeekSliderTest, PaintingValidatesTheWindow)
{
    SeekSlider& slider = Make();
    slider.SetPos(1);
    EXPECT_TRUE(NeedsPaint());
    ParentWindow::Pump();
    EXPECT_FALSE(NeedsPaint());
}

// ---- taking the window over ----

TEST_F(SeekSliderTest, OtherMessagesReachTheWindowAsBefore)
{
    SendMessageW(m_child, WM_USER + 5, 0, 0);
    const LRESULT before = SendMessageW(m_child, WM_GETDLGCODE, 0, 0);
    Make();
    EXPECT_EQ(SendMessageW(m_child, WM_GETDLGCODE, 0, 0), before);
    EXPECT_EQ(before, DLGC_STATIC);
}

TEST_F(SeekSliderTest, TheWindowIsGivenBackAtTheEnd)
{
    const LONG_PTR before = GetWindowLongPtrW(m_child, GWLP_WNDPROC);
    Make();
    EXPECT_NE(GetWindowLongPtrW(m_child, GWLP_WNDPROC), before);
    m_slider.reset();
    EXPECT_EQ(GetWindowLongPtrW(m_child, GWLP_WNDPROC), before);
}

TEST_F(SeekSliderTest, ANewSliderTakesTheWindowFromTheOneBefore)
{
    const LONG_PTR before = GetWindowLongPtrW(m_child, GWLP_WNDPROC);
    Make();
    SeekSlider& second = Make(); // made before the first goes
    second.SetRange(0, 400);
    EXPECT_EQ(Tap(100), 200);
    EXPECT_EQ(second.GetPos(), 200);
    m_slider.reset();
    EXPECT_EQ(GetWindowLongPtrW(m_child, GWLP_WNDPROC), before);
}

TEST_F(SeekSliderTest, ItOutlivesItsWindow)
{
    SeekSlider& slider = Make();
    DestroyWindow(m_child);
    EXPECT_EQ(slider.SetPos(3), 1);
    EXPECT_EQ(slider.GetPos(), 3);
    m_slider.reset();
    EXPECT_FALSE(IsWindow(m_child));
}

TEST_F(SeekSliderTest, AnOwnerWithoutChildrenHasASliderThatIsNotSeen)
{
    DestroyWindow(m_child);
    ParentWindow::Pump();
    ValidateRect(m_parent.Get(), nullptr);
    SeekSlider& slider = Make();
    EXPECT_EQ(slider.SetPos(3), 1);
    EXPECT_FALSE(GetUpdateRect(m_parent.Get(), nullptr, FALSE));
}

TEST_F(SeekSliderTest, ItTakesTheFirstChild)
{
    const HWND second = CreateWindowExW(0, TEXT("static"), TEXT(""), WS_CHILD | WS_VISIBLE, 0, 0, 5, 5, m_parent.Get(),
                                        nullptr, nullptr, nullptr);
    const HWND first = GetWindow(m_parent.Get(), GW_CHILD);
    const LONG_PTR before = GetWindowLongPtrW(first, GWLP_WNDPROC);
    const HWND other = first == second ? m_child : second;
    const LONG_PTR otherBefore = GetWindowLongPtrW(other, GWLP_WNDPROC);
    Make();
    EXPECT_NE(GetWindowLongPtrW(first, GWLP_WNDPROC), before);
    EXPECT_EQ(GetWindowLongPtrW(other, GWLP_WNDPROC), otherBefore);
}
