#include "controls/seek_slider.h"

#include "tests/gui/skin_fixture.h"

#include <gtest/gtest.h>

#include <memory>

using namespace cardsong::test;

namespace {

constexpr UINT kId = 300;
constexpr int kWidth = 200;
constexpr int kHeight = 10;

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
    constexpr std::uint16_t gray = 0x10 << 11 | 0x20 << 5 | 0x10; // 0x80 of each
    slider.SetPos(25);
    EXPECT_EQ(At(0, 0), gray);
    EXPECT_EQ(At(49, kHeight - 1), gray);
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
