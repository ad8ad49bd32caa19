// Alerts as a user meets them: on a screen that nobody sees, with a clock that stands still.
#include "common/trace_log.h"
#include "gui/alert_message_window.h"
#include "gui/caption_text.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "tests/gui/alert_fixture.h"
#include "tests/gui/recorded_sounds_linux_test.h"
#include "tests/gui/skin_fixture.h"
#include "tests/platform/kernel/module_builder.h"
#include "tests/platform/user/window_threads.h"

#include <map>
#include <mutex>

using namespace cardsong;
using namespace cardsong::test;

namespace {

using Frame = std::vector<std::uint16_t>;

constexpr POINT kRightButton{ 230, 217 };
constexpr POINT kLeftButton{ 90, 217 };

Frame Screen()
{
    Frame frame(std::size_t{ kScreenWidthPx } * kScreenHeightPx);
    gdi::CopyScreen(frame);
    return frame;
}

std::uint16_t At(const Frame& frame, int x, int y)
{
    return frame[static_cast<std::size_t>(y) * kScreenWidthPx + static_cast<std::size_t>(x)];
}

class AlertOnScreen : public testing::Test {
protected:
    AlertOnScreen()
    {
        kernel::InstallClock(&m_clock);
        gdi::ClearScreen();
        TakeSounds();
    }
    ~AlertOnScreen() override
    {
        m_alert.Close();
        EXPECT_TRUE(AlertOwner::PumpUntil([this] { return WindowThreads() <= m_threads; })); // nobody uses the clock
        kernel::InstallClock(nullptr);
    }

    [[nodiscard]] bool HasClosed()
    {
        return AlertOwner::PumpUntil([&] { return IsFree(m_alert) && !m_owner.heard.empty(); });
    }
    static bool OwesPaint(HWND window)
    {
        RECT rest;
        if (GetUpdateRect(window, &rest, FALSE))
            return true;
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
            if (OwesPaint(child))
                return true;
        return false;
    }
    // Waits until the alert's thread has done what it was told before, and has painted.
    static void Settle(HWND alert)
    {
        for (int i = 0; i < 3 || OwesPaint(alert); ++i)
            SendMessageW(alert, WM_NULL, 0, 0);
        SendMessageW(alert, WM_NULL, 0, 0); // the last of its windows is not half painted
    }
    HWND Show(const WString& title, const WString& message, int kind)
    {
        EXPECT_EQ(m_alert.Prepare(m_owner, title.c_str(), message.c_str(), kind, 0, 0, 0), 0);
        const HWND window = m_alert.Show();
        Settle(window);
        return window;
    }
    // The screen with such an alert on it.
    Frame PictureOf(const WString& title, const WString& message, int kind = kAlertPlain)
    {
        Show(title, message, kind);
        const Frame frame = Screen();
        EXPECT_EQ(m_alert.Close(), 0);
        return frame;
    }

    kernel::VirtualClock m_clock;
    SkinDevice m_skin;
    AlertOwner m_owner;
    CAlertMessageWin m_alert;
    const int m_threads = WindowThreads(); // with the owner's
};

// What an alert shows, drawn by the test: lines of the message with their tops.
class ExpectedPicture {
public:
    explicit ExpectedPicture(COLORREF ground) : m_picture(ground), m_font(CreateCaptionFont(m_picture.Context(), 14))
    {
        SelectObject(m_picture.Context(), m_font.Get());
        SetBkMode(m_picture.Context(), TRANSPARENT);
        TEXTMETRICW metrics = {};
        GetTextMetricsW(m_picture.Context(), &metrics);
        lineHeightPx = metrics.tmHeight + metrics.tmExternalLeading;
    }
    ~ExpectedPicture() { SelectObject(m_picture.Context(), GetStockObject(SYSTEM_FONT)); }

    void Title(const WString& text)
    {
        SetTextColor(m_picture.Context(), RGB(255, 255, 255));
        RECT place = { 32, 10, 288, 10 + lineHeightPx };
        DrawTextW(m_picture.Context(), text.c_str(), -1, &place, DT_NOPREFIX);
    }
    void Line(const WString& text, int top)
    {
        SetTextColor(m_picture.Context(), 0);
        RECT place = { (kScreenWidthPx - Width(text)) / 2, top, kScreenWidthPx, top + lineHeightPx };
        DrawTextW(m_picture.Context(), text.c_str(), -1, &place, DT_NOPREFIX | DT_SINGLELINE | DT_NOCLIP);
    }
    // All lines, the block in the middle of 200 pixels.
    void Message(const std::vector<WString>& lines)
    {
        int top = (200 - lineHeightPx * (static_cast<int>(lines.size()) - 1)) / 2;
        for (const WString& line : lines) {
            Line(line, top);
            top += lineHeightPx;
        }
    }
    int Width(const WString& text) const
    {
        SIZE size = {};
        GetTextExtentExPointW(m_picture.Context(), text.c_str(), static_cast<int>(text.size()), 10'000, nullptr,
                              nullptr, &size);
        return size.cx;
    }
    Frame Pixels() const
    {
        Frame frame;
        for (int y = 0; y < kScreenHeightPx; ++y)
            for (int x = 0; x < kScreenWidthPx; ++x)
                frame.push_back(m_picture.At(x, y));
        return frame;
    }

    int lineHeightPx = 0;

private:
    Picture m_picture;
    UniqueFont m_font;
};

constexpr GifColor kGround{ 0x80, 0xC0, 0x40 };
constexpr COLORREF kGroundColor = RGB(0x80, 0xC0, 0x40);
constexpr std::uint16_t kGround565 = 0x8608;

class AlertPictures : public AlertOnScreen {
protected:
    AlertPictures() { Background("popup_mainzone_info_bg", 320, 240, kGround); }
    void Background(const std::string& name, unsigned widthPx, unsigned heightPx, GifColor color)
    {
        m_skin.Device().WriteFile("user/Windows/" + name + ".gif", PlainGif(widthPx, heightPx, color));
    }
};

} // namespace

// ---- time ----

TEST_F(AlertOnScreen, AnErrorThatNobodyAnswersClosesAfterFiveSecondsWithTheAnswerOk)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertError);
    m_clock.Advance(4999);
    Settle(window);
    AlertOwner::Pump();
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    EXPECT_TRUE(m_owner.heard.empty());
    m_clock.Advance(1);
    ASSERT_TRUE(HasClosed());
    EXPECT_EQ(m_owner.heard, (std::vector<HeardAnswer>{ { 181, window, true } }));
}

TEST_F(AlertOnScreen, OtherKindsWaitForEver)
{
    for (const int kind : { kAlertQuestion, kAlertInfo, kAlertPlain, kAlertProcessing, kAlertBack }) {
        const HWND window = ShowAlert(m_alert, m_owner, kind);
        m_clock.Advance(3'600'000);
        Settle(window);
        EXPECT_EQ(m_alert.State(), AlertState::Shown) << kind;
        EXPECT_EQ(m_alert.Close(), 0);
    }
    EXPECT_TRUE(m_owner.heard.empty());
}

TEST_F(AlertOnScreen, AnErrorThatIsAnsweredIsNotAnsweredAgainByItsTime)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertError);
    m_clock.Advance(4000);
    Answer(window, kAlertOkId);
    ASSERT_TRUE(HasClosed());
    m_clock.Advance(10'000);
    AlertOwner::Pump();
    EXPECT_EQ(m_owner.heard.size(), 1U);
}

TEST_F(AlertOnScreen, AnotherTimerOfTheWindowIsNoAnswer)
{
    const HWND window = ShowAlert(m_alert, m_owner, kAlertError);
    SendMessageW(window, WM_TIMER, 99, 0);
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    SendMessageW(window, WM_TIMER, 100, 0);
    ASSERT_TRUE(HasClosed());
}

// ---- fingers and keys ----

TEST_F(AlertOnScreen, ATapOnAButtonAnswers)
{
    const HWND window = Show(TEXT("t"), TEXT("m"), kAlertQuestion);
    user::PointerDown(kLeftButton);
    user::PointerUp(kLeftButton);
    ASSERT_TRUE(HasClosed());
    EXPECT_EQ(m_owner.heard, (std::vector<HeardAnswer>{ { 184, window, true } }));
}

TEST_F(AlertOnScreen, ATapBesideTheButtonsDoesNothing)
{
    const HWND window = Show(TEXT("t"), TEXT("m"), kAlertInfo);
    for (const POINT at : { POINT{ 160, 120 }, kLeftButton, POINT{ 159, 217 }, POINT{ 230, 200 } }) {
        user::PointerDown(at);
        user::PointerUp(at);
    }
    Settle(window);
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    user::PointerDown(kRightButton);
    user::PointerUp(kRightButton);
    ASSERT_TRUE(HasClosed());
}

TEST_F(AlertOnScreen, KeysDoNothingBeforeAndAfterATouchedButton)
{
    const HWND window = Show(TEXT("t"), TEXT("m"), kAlertInfo);
    const auto strikeAll = [&] {
        for (UINT key = 1; key < 256; ++key) {
            user::KeyDown(key);
            user::KeyUp(key);
            Settle(window);
        }
    };
    strikeAll();
    user::PointerDown(kRightButton);
    user::PointerUp({ 10, 10 }); // not on the button: no answer
    Settle(window);
    strikeAll();
    AlertOwner::Pump();
    EXPECT_EQ(m_alert.State(), AlertState::Shown);
    EXPECT_TRUE(m_owner.heard.empty());
}

TEST_F(AlertOnScreen, TakesTheForegroundAndGivesItBack)
{
    SetForegroundWindow(m_owner);
    const HWND window = Show(TEXT("t"), TEXT("m"), kAlertInfo);
    EXPECT_EQ(GetForegroundWindow(), window);
    EXPECT_EQ(m_alert.Close(), 0);
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(m_owner));
}

TEST_F(AlertOnScreen, OfTheProcessingKindLetsNoTapThroughToTheWindowItHoldsUp)
{
    SetForegroundWindow(m_owner);
    AlertOwner::Pump();
    Show(TEXT(""), TEXT(""), kAlertProcessing);
    AlertOwner::Pump();
    user::PointerDown({ 20, 20 });
    MSG message;
    EXPECT_FALSE(PeekMessageW(&message, m_owner, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
    user::PointerUp({ 20, 20 });
    EXPECT_EQ(m_alert.Close(), 0);
    AlertOwner::Pump();
    user::PointerDown({ 20, 20 });
    EXPECT_TRUE(PeekMessageW(&message, m_owner, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
    user::PointerUp({ 20, 20 });
}

// ---- pictures ----

TEST_F(AlertPictures, TheTitleStandsInWhiteAtTheTop)
{
    ExpectedPicture expected(kGroundColor);
    expected.Title(TEXT("Title & more"));
    EXPECT_EQ(PictureOf(TEXT("Title & more"), TEXT("")), expected.Pixels());
}

TEST_F(AlertPictures, ALongTitleIsCutAfterAWord)
{
    ExpectedPicture expected(kGroundColor);
    expected.Title(TEXT("A title of words"));
    const WString words = TEXT("A title of words ") + WString(40, 'W');
    EXPECT_EQ(PictureOf(words, TEXT("")), expected.Pixels());
}

TEST_F(AlertPictures, AMessageOfOneLineHasItsTopInTheMiddleOf200Pixels)
{
    ExpectedPicture expected(kGroundColor);
    expected.Line(TEXT("Message & more"), 100);
    EXPECT_EQ(PictureOf(TEXT(""), TEXT("Message & more")), expected.Pixels());
}

TEST_F(AlertPictures, LinesStandUnderEachOtherEachInTheMiddle)
{
    for (std::size_t count = 2; count <= 6; ++count) {
        ExpectedPicture expected(kGroundColor);
        std::vector<WString> lines;
        WString message;
        for (std::size_t i = 0; i < count; ++i) {
            lines.push_back(TEXT("Line") + WString(i * 2, 'x'));
            message += (i > 0 ? TEXT("\n") : TEXT("")) + lines.back();
        }
        expected.Message(lines);
        EXPECT_EQ(PictureOf(TEXT(""), message), expected.Pixels()) << count;
    }
}

TEST_F(AlertPictures, AnEmptyLineTakesItsRoom)
{
    ExpectedPicture expected(kGroundColor);
    expected.Message({ TEXT("one"), TEXT(""), TEXT("two") });
    EXPECT_EQ(PictureOf(TEXT(""), TEXT("one\r\ntwo")), expected.Pixels());
}

TEST_F(AlertPictures, TheMessageIsWrappedTo250Pixels)
{
    ExpectedPicture expected(kGroundColor);
    WString line = TEXT("i");
    while (expected.Width(line + TEXT("i")) <= 250)
        line += TEXT("i");
    expected.Message({ line, TEXT("i") });
    EXPECT_EQ(PictureOf(TEXT(""), line + TEXT("i")), expected.Pixels());
}

TEST_F(AlertPictures, IsWithoutAMessageWhereThereIsNone)
{
    const ExpectedPicture expected(kGroundColor);
    EXPECT_EQ(PictureOf(TEXT(""), TEXT("")), expected.Pixels());
    EXPECT_EQ(PictureOf(TEXT(""), TEXT(" \r\n ")), expected.Pixels());
}

TEST_F(AlertPictures, ABackgroundOfAnotherSizeStandsInTheMiddleOnBlack)
{
    Background("popup_mainzone_info_bg", 100, 60, kGround);
    const Frame small = PictureOf(TEXT(""), TEXT(""));
    for (const POINT inside : { POINT{ 110, 90 }, POINT{ 209, 149 } })
        EXPECT_EQ(At(small, inside.x, inside.y), kGround565);
    for (const POINT outside : { POINT{ 109, 90 }, POINT{ 110, 89 }, POINT{ 210, 149 }, POINT{ 209, 150 } })
        EXPECT_EQ(At(small, outside.x, outside.y), kBlack565);
    Background("popup_mainzone_info_bg", 400, 300, kGround);
    const Frame large = PictureOf(TEXT(""), TEXT(""));
    EXPECT_EQ(std::count(large.begin(), large.end(), kGround565), 320 * 240);
}

TEST_F(AlertPictures, AnErrorHasAGroundOfItsOwn)
{
    Background("popup_mainzone_error_bg", 320, 240, kRed);
    EXPECT_EQ(At(PictureOf(TEXT(""), TEXT(""), kAlertError), 5, 120), kRed565);
    for (const int kind : { 1, 2, 3, 5, 6, -1 })
        EXPECT_EQ(At(PictureOf(TEXT(""), TEXT(""), kind), 5, 120), kGround565) << kind;
}

TEST_F(AlertPictures, ItsButtonsWearTheirSkinAndShowThatTheyAreHeld)
{
    const auto normal = m_skin.Add("gui_popup_but_normal", 140, 32);
    const auto pressed = m_skin.Add("gui_popup_but_down", 140, 32);
    const HWND window = Show(TEXT(""), TEXT(""), kAlertQuestion);
    Frame frame = Screen();
    EXPECT_EQ(At(frame, 20, 201), normal);
    EXPECT_EQ(At(frame, 299, 232), normal);
    EXPECT_EQ(At(frame, 19, 201), kGround565);
    EXPECT_EQ(At(frame, 300, 232), kGround565);
    EXPECT_EQ(At(frame, 20, 233), kGround565);
    user::PointerDown(kRightButton);
    Settle(window);
    frame = Screen();
    EXPECT_EQ(At(frame, 20, 201), normal);
    EXPECT_EQ(At(frame, 160, 201), pressed);
    user::PointerUp({ 0, 0 });
    Settle(window);
    EXPECT_EQ(At(Screen(), 160, 201), normal);
}

TEST_F(AlertPictures, WhereAButtonIsSeeThroughThePictureShows)
{
    Background("gui_popup_but_normal", 140, 32, kMagenta);
    Background("gui_popup_but_down", 140, 32, kMagenta);
    const HWND window = Show(TEXT(""), TEXT(""), kAlertQuestion);
    const Frame before = Screen();
    EXPECT_EQ(std::count(before.begin(), before.end(), kGround565), 320 * 240);
    user::PointerDown(kRightButton);
    Settle(window);
    user::PointerUp({ 0, 0 });
    Settle(window);
    EXPECT_EQ(Screen(), before);
}

TEST_F(AlertOnScreen, WithoutASkinItIsBlackAndStillAnswers)
{
    const HWND window = Show(TEXT("Title"), TEXT("Message"), kAlertInfo);
    const Frame frame = Screen();
    EXPECT_EQ(At(frame, 0, 0), kBlack565);
    EXPECT_EQ(At(frame, 230, 230), kBlack565);
    EXPECT_NE(std::count(frame.begin(), frame.end(), kWhite565), 0); // the title
    user::PointerDown(kRightButton);
    user::PointerUp(kRightButton);
    ASSERT_TRUE(HasClosed());
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(AlertPictures, ComesInOneFrame)
{
    m_skin.Add("gui_popup_but_normal", 140, 32);
    std::mutex mutex;
    std::vector<Frame> frames;
    const Frame before = Screen();
    user::InstallPresenter([&] {
        const std::lock_guard lock(mutex);
        frames.push_back(Screen());
    });
    Show(TEXT("Title"), TEXT("Message"), kAlertQuestion);
    user::InstallPresenter({});
    const Frame after = Screen();
    EXPECT_NE(before, after);
    ASSERT_FALSE(frames.empty());
    for (const Frame& frame : frames)
        EXPECT_TRUE(frame == before || frame == after);
}

TEST_F(AlertPictures, IsPaintedAgainWhenItIsUncovered)
{
    m_skin.Add("gui_popup_but_normal", 140, 32);
    const HWND window = Show(TEXT("Title"), TEXT("Message"), kAlertInfo);
    const Frame before = Screen();
    CAlertMessageWin cover;
    ShowAlert(cover, m_owner, kAlertError);
    EXPECT_NE(Screen(), before);
    EXPECT_EQ(cover.Close(), 0);
    Settle(window);
    EXPECT_EQ(Screen(), before);
}

// ---- the processing box ----

TEST_F(AlertPictures, OfTheProcessingKindPlaysItsAnimationInTheBoxOnly)
{
    const auto color = m_skin.Add("Processing", 125, 125);
    Show(TEXT(""), TEXT("never shown"), kAlertProcessing);
    const Frame frame = Screen();
    EXPECT_EQ(std::count(frame.begin(), frame.end(), color), 125 * 125);
    EXPECT_EQ(At(frame, 177, 73), color);
    EXPECT_EQ(At(frame, 301, 197), color);
    EXPECT_EQ(m_alert.Close(), 0);
    EXPECT_FALSE(StopGifAnim()); // it has ended
}

TEST_F(AlertPictures, OfTheProcessingKindLetsShowThroughWhatLiesBelow)
{
    CAlertMessageWin below;
    ShowAlert(below, m_owner, kAlertPlain);
    const Frame before = Screen();
    Show(TEXT(""), TEXT("never shown"), kAlertProcessing); // without an animation
    EXPECT_EQ(Screen(), before);
    EXPECT_EQ(m_alert.Close(), 0);
    EXPECT_EQ(below.Close(), 0);
}

TEST_F(AlertPictures, OfTheProcessingKindIsGoneFromTheScreenAfterItsEnd)
{
    m_skin.Add("Processing", 125, 125);
    CAlertMessageWin below;
    const HWND ground = ShowAlert(below, m_owner, kAlertPlain);
    Settle(ground);
    const Frame before = Screen();
    Show(TEXT(""), TEXT(""), kAlertProcessing);
    EXPECT_NE(Screen(), before);
    EXPECT_EQ(m_alert.Close(), 0);
    Settle(ground);
    EXPECT_EQ(Screen(), before);
    EXPECT_EQ(below.Close(), 0);
}

TEST_F(AlertPictures, OfTheProcessingKindHasATitleWhereOneIsGiven)
{
    const Frame plain = PictureOf(TEXT(""), TEXT(""), kAlertProcessing);
    const Frame titled = PictureOf(TEXT("Scan"), TEXT(""), kAlertProcessing);
    int differing = 0;
    for (int y = 0; y < kScreenHeightPx; ++y) {
        for (int x = 0; x < kScreenWidthPx; ++x) {
            if (At(plain, x, y) == At(titled, x, y))
                continue;
            ++differing;
            EXPECT_GE(x, 177 + 32 - 2);
            EXPECT_LT(x, 177 + 93 + 2);
            EXPECT_GE(y, 73 + 10);
        }
    }
    EXPECT_GT(differing, 20);
}

// ---- sounds ----

TEST_F(AlertOnScreen, ErrorAndInfoSoundOnceWhenTheirButtonIsFirstDrawn)
{
    for (const int kind : { kAlertError, kAlertInfo }) {
        const HWND window = Show(TEXT(""), TEXT(""), kind);
        InvalidateRect(window, nullptr, FALSE);
        InvalidateRect(GetDlgItem(window, 181), nullptr, FALSE);
        Settle(window);
        user::PointerDown(kRightButton);
        user::PointerUp({ 0, 0 });
        Settle(window);
        EXPECT_EQ(TakeSounds(),
                  (Sounds{ { TEXT("\\Windows\\TAVO_Audio_InfoMessage.wav"), SND_ASYNC | SND_FILENAME } }));
        EXPECT_EQ(m_alert.Close(), 0);
        EXPECT_EQ(TakeSounds(), Sounds());
    }
}

TEST_F(AlertOnScreen, ALowBatteryHasASoundOfItsOwnAndOtherNumbersAreSilent)
{
    const auto soundsOf = [&](int sound) {
        Settle(ShowAlert(m_alert, m_owner, kAlertInfo, sound));
        EXPECT_EQ(m_alert.Close(), 0);
        return TakeSounds();
    };
    EXPECT_EQ(soundsOf(1), (Sounds{ { TEXT("\\Windows\\TAVO_Audio_LowBattery.WAV"), SND_ASYNC | SND_FILENAME } }));
    EXPECT_EQ(soundsOf(2), Sounds());
    EXPECT_EQ(soundsOf(-1), Sounds());
}

TEST_F(AlertOnScreen, OtherKindsAreSilent)
{
    for (const int kind : { kAlertQuestion, kAlertPlain, kAlertProcessing, kAlertBack }) {
        Show(TEXT(""), TEXT(""), kind);
        EXPECT_EQ(m_alert.Close(), 0);
        EXPECT_EQ(TakeSounds(), Sounds()) << kind;
    }
}

TEST_F(AlertOnScreen, AnAnswerEndsEverySound)
{
    Answer(Show(TEXT(""), TEXT(""), kAlertQuestion), kAlertNoId);
    ASSERT_TRUE(HasClosed());
    EXPECT_EQ(TakeSounds(), (Sounds{ { TEXT(""), 0 } }));
    ShowAlert(m_alert, m_owner, kAlertError, 7);
    m_clock.Advance(5000);
    ASSERT_TRUE(AlertOwner::PumpUntil([&] { return m_owner.heard.size() == 2; }));
    EXPECT_EQ(TakeSounds(), (Sounds{ { TEXT(""), 0 } }));
}

// ---- strings ----

namespace {

constexpr LANGID kLanguage = 0x0409;

class AlertStrings : public AlertPictures {
protected:
    AlertStrings()
    {
        m_skin.Device().WriteFile(
            "user/Windows/TAVO_StringTable_0409.dll",
            ModuleBuilder(ModuleKind::Pe32Plus)
                .AddStrings(992, kLanguage, { {}, {}, {}, {}, {}, {}, {}, {}, {}, u"Back", {}, u"Yes", u"No", u"OK" })
                .AddStrings(1040, kLanguage, { m_long, u"short" })
                .Build());
        auto tree = kernel::CurrentDeviceTree();
        tree.uiLanguage = kLanguage;
        kernel::InstallDeviceTree(tree);
    }
    Frame PictureOfStrings(int titleId, int messageId, int kind = kAlertPlain)
    {
        EXPECT_EQ(m_alert.Prepare(m_owner, nullptr, nullptr, kind, 0, titleId, messageId), 0);
        Settle(m_alert.Show());
        const Frame frame = Screen();
        EXPECT_EQ(m_alert.Close(), 0);
        return frame;
    }

    // Where it is cut is seen, although a title has no room for so many letters.
    const WString m_long = WString(60, 0x200B) + WString(140, 'i');
};

} // namespace

TEST_F(AlertStrings, TextsThatAreNotGivenAreStringsOfTheirIds)
{
    EXPECT_EQ(PictureOfStrings(1041, 1041), PictureOf(TEXT("short"), TEXT("short")));
    EXPECT_EQ(PictureOfStrings(0, -1), PictureOf(TEXT(""), TEXT("")));
    EXPECT_EQ(PictureOfStrings(1042, 1042), PictureOf(TEXT(""), TEXT(""))); // not in the module
}

TEST_F(AlertStrings, GivenTextsWinOverStrings)
{
    EXPECT_EQ(m_alert.Prepare(m_owner, TEXT("a"), TEXT(""), kAlertPlain, 0, 1041, 1041), 0);
    Settle(m_alert.Show());
    const Frame frame = Screen();
    EXPECT_EQ(m_alert.Close(), 0);
    EXPECT_EQ(frame, PictureOf(TEXT("a"), TEXT("")));
}

TEST_F(AlertStrings, OfAMessageString160UnitsAreShown)
{
    EXPECT_EQ(PictureOfStrings(0, 1040), PictureOf(TEXT(""), m_long.substr(0, 160)));
    EXPECT_NE(PictureOfStrings(0, 1040), PictureOf(TEXT(""), m_long.substr(0, 159)));
}

TEST_F(AlertStrings, ACopiedMessageHasNoLimit)
{
    EXPECT_NE(PictureOf(TEXT(""), m_long), PictureOf(TEXT(""), m_long.substr(0, 160)));
}

TEST_F(AlertStrings, OfATitleString64UnitsAreShown)
{
    EXPECT_EQ(PictureOfStrings(1040, 0), PictureOf(m_long.substr(0, 64), TEXT("")));
    EXPECT_NE(PictureOf(m_long.substr(0, 65), TEXT("")), PictureOf(m_long.substr(0, 64), TEXT("")));
}

TEST_F(AlertStrings, CaptionsAreTheStrings1001And1003To1005)
{
    struct Expected {
        int kind;
        int id;
        LPCWSTR caption;
    };
    constexpr Expected table[] = { { kAlertError, 181, TEXT("OK") },
                                   { kAlertQuestion, 184, TEXT("Yes") },
                                   { kAlertQuestion, 185, TEXT("No") },
                                   { kAlertBack, 183, TEXT("Back") } };
    for (const auto& [kind, id, caption] : table) {
        Background("gui_popup_but_normal", 140, 32, kBlue);
        const HWND window = Show(TEXT(""), TEXT(""), kind);
        RECT place = {};
        GetWindowRect(GetDlgItem(window, id), &place);
        const Frame frame = Screen();
        EXPECT_EQ(m_alert.Close(), 0);
        const Picture expected(RGB(0, 0, 255));
        const UniqueFont font = CreateCaptionFont(expected.Context(), 12);
        const SelectedObject selected(expected.Context(), font.Get());
        SetBkMode(expected.Context(), TRANSPARENT);
        SetTextColor(expected.Context(), RGB(255, 255, 255));
        DrawTextW(expected.Context(), caption, -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        for (int y = place.top; y < place.bottom; ++y)
            for (int x = place.left; x < place.right; ++x)
                ASSERT_EQ(At(frame, x, y), expected.At(x, y)) << x << ", " << y << " of " << id;
    }
}

// ---- log ----

namespace {

class AlertLog : public AlertOnScreen {
protected:
    AlertLog()
    {
        auto tree = kernel::CurrentDeviceTree();
        tree.debugOutput = true;
        kernel::InstallDeviceTree(tree);
        g_logChecked = 1;
        g_logEnabled = 1;
        testing::internal::CaptureStderr();
    }
    ~AlertLog() override
    {
        g_logChecked = 0;
        g_logEnabled = 0;
    }
    static bool Has(const std::string& log, const std::string& line)
    {
        return log.find("[AP][Bluetooth][FunName]" + line + "\n") != std::string::npos; // the name of number 9
    }
    static std::string Number(HWND window)
    {
        return std::to_string(static_cast<int>(reinterpret_cast<LONG_PTR>(window)));
    }
};

} // namespace

TEST_F(AlertLog, TellsOfAnswersForwardedCommandsAndMessagesThatMeanNothing)
{
    const HWND window = Show(TEXT(""), TEXT(""), kAlertInfo);
    SendMessageW(window, WM_COMMAND, 7, 8);
    SendMessageW(window, WM_USER + 3, 1, 2);
    SendMessageW(window, WM_KEYDOWN, VK_RETURN, 3);
    Answer(window, kAlertOkId);
    ASSERT_TRUE(HasClosed());
    ASSERT_TRUE(AlertOwner::PumpUntil([this] { return WindowThreads() <= m_threads; })); // the last line comes last
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(Has(log, "Alert Win Sent Message = 273, wParam = 7, lParam = 8"));
    EXPECT_TRUE(Has(log, "Alert Win Sent Message = 1027, wParam = 1, lParam = 2"));
    EXPECT_TRUE(Has(log, "Alert Win Sent Message = 273, wParam = 181, lParam = " + Number(window)));
    EXPECT_NE(log.find("[AP][Bluetooth][FunName]Alert Win Receive Message = WM_DRAWITEM, wParam = 181, lParam = "),
              std::string::npos);
    EXPECT_EQ(log.find("Message = 256,"), std::string::npos); // keys are swallowed
}

TEST_F(AlertLog, TellsOfTheEndByTime)
{
    const HWND window = Show(TEXT(""), TEXT(""), kAlertError);
    m_clock.Advance(5000);
    ASSERT_TRUE(HasClosed());
    ASSERT_TRUE(AlertOwner::PumpUntil([this] { return WindowThreads() <= m_threads; }));
    EXPECT_TRUE(Has(testing::internal::GetCapturedStderr(),
                    "Alert Win Sent Message = 273, wParam = 181, lParam = " + Number(window)));
}
