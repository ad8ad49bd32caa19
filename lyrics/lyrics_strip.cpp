#include "lyrics/lyrics_strip.h"

#include "common/device_messages.h"
#include "common/rect.h"
#include "common/string_table.h"
#include "gui/text_line.h"

UINT g_msgLyricsSettingChange;

namespace {

constexpr int kFontPoints = 18;

LyricsStrip* g_strip; // through which the window's procedure reaches it

UniqueFont MakeFont()
{
    const HDC screen = GetDC(nullptr);
    UniqueFont font = CreatePlainFont(screen, kFontPoints);
    ReleaseDC(nullptr, screen);
    return font;
}

SIZE SizeOf(WStringView text, HFONT font)
{
    const HDC screen = GetDC(nullptr);
    SIZE size = {};
    {
        const SelectedObject selected(screen, font);
        GetTextExtentExPointW(screen, text.data(), static_cast<int>(text.size()), 0, nullptr, nullptr, &size);
    }
    ReleaseDC(nullptr, screen);
    return size;
}

} // namespace

LyricsStrip::LyricsStrip(LyricsContext& context)
    : m_context(context), m_marquee(context.Positions()), m_font(MakeFont())
{
    g_strip = this;
    g_msgLyricsSettingChange = RegisterWindowMessageW(kLyricsSettingMessage);
    m_context.ReloadSettings();
}

LyricsStrip::~LyricsStrip()
{
    if (m_window != nullptr)
        DestroyWindow(m_window);
    if (m_isClassRegistered)
        UnregisterClassW(kLyricsStripClass, g_hInstance);
    g_strip = nullptr;
}

void LyricsStrip::Show(HWND parent)
{
    if (!m_context.IsReady())
        return;
    if (m_window == nullptr)
        Create(parent);
    m_state = LyricsDisplay::Shown;
    SetVisible(true);
}

void LyricsStrip::Pause()
{
    m_state = LyricsDisplay::Paused;
    SetVisible(false);
}

void LyricsStrip::Stop()
{
    m_state = LyricsDisplay::Stopped;
    m_context.ClearReady();
    m_frame.Clear();
    SetVisible(false);
}

void LyricsStrip::SetVisible(bool isVisible)
{
    if (m_window != nullptr)
        ShowWindow(m_window, isVisible ? SW_SHOW : SW_HIDE);
}

void LyricsStrip::ReloadSettings()
{
    m_context.ReloadSettings();
    if (m_window != nullptr)
        m_background.Load();
}

void LyricsStrip::Create(HWND parent)
{
    if (!m_isClassRegistered) {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = g_hInstance;
        windowClass.lpszClassName = kLyricsStripClass;
        m_isClassRegistered = RegisterClassW(&windowClass) != 0;
    }
    constexpr RECT place = kLyricsStripPlace;
    CreateWindowExW(WS_EX_NOACTIVATE, kLyricsStripClass, kLyricsStripName, WS_CHILD | WS_VISIBLE, place.left, place.top,
                    WidthOf(place), HeightOf(place), parent, nullptr, g_hInstance, nullptr);
}

// ---- the window ----

LRESULT CALLBACK LyricsStrip::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (g_strip == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    if (message == g_msgLyricsSettingChange)
        g_strip->ReloadSettings();
    return g_strip->Answer(window, message, wParam, lParam);
}

LRESULT LyricsStrip::Answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: TakeWindow(window); return 0;
    case WM_DESTROY:
        m_window = nullptr;
        m_background.Free();
        return 0;
    case WM_ERASEBKGND: m_background.Draw(reinterpret_cast<HDC>(wParam)); return 1;
    case WM_PAINT: Paint(); return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

void LyricsStrip::TakeWindow(HWND window)
{
    m_window = window;
    RECT client;
    GetClientRect(window, &client);
    m_context.SetStripRect(&client);
    m_background.Load();
}

// The player's window paints over the strip on some systems; between two steps of the line nobody else would draw it.
void LyricsStrip::Paint()
{
    PAINTSTRUCT paint;
    const HDC screen = BeginPaint(m_window, &paint);
    if (m_frame.IsDrawn())
        m_frame.CopyTo(screen);
    else
        m_background.Draw(screen);
    EndPaint(m_window, &paint);
}

// ---- the lines ----

void LyricsStrip::Update(std::int32_t positionMs)
{
    if (m_window == nullptr || m_state != LyricsDisplay::Shown)
        return;
    const LineOrder order = m_context.HasLyrics() ? LineOrder::Once : LineOrder::Round;
    const std::int64_t placeMs = std::int64_t{ positionMs } - m_context.TimeOffsetMs();
    const auto chosen = ChooseLine(m_context.Lines(), order, CurrentLine(), placeMs);
    if (!chosen)
        return;
    const bool isNew = chosen->index != CurrentLine();
    if (isNew)
        StartLine(chosen->index, order);
    // The line beside a new one has changed even where the new one stands still.
    if (m_marquee.MoveTo(chosen->positionMs) || isNew)
        DrawLines(chosen->index, order);
}

void LyricsStrip::StartLine(std::int32_t index, LineOrder order)
{
    const ConstLyricList lines = m_context.Lines();
    const LyricLine& line = lines.At(index);
    const SIZE size = SizeOf(ShownPart(*line.text), m_font.Get());
    m_context.SetCurrentLineSize(size);
    MarqueeLine begun = { line.timeMs, std::nullopt, size.cx };
    if (order == LineOrder::Round)
        begun.endMs = begun.startMs + kPlaceholderIntervalMs;
    else if (const LyricLine* const next = lines.Find(index + 1))
        begun.endMs = next->timeMs;
    m_marquee.StartLine(index, begun, m_context.StripRect());
}

void LyricsStrip::DrawLines(std::int32_t index, LineOrder order)
{
    const ConstLyricList lines = m_context.Lines();
    const LyricLine* const previous = lines.Find(LineBefore(index, lines.Count(), order));
    const LyricLine* const next = lines.Find(LineAfter(index, lines.Count(), order));
    const auto neighbour = [](const LyricLine* line) { return line != nullptr ? HasNeighbour::Yes : HasNeighbour::No; };
    const MarqueeFrame places = m_marquee.TakeFrame(neighbour(previous), neighbour(next));
    std::optional<PlacedText> centred;
    if (places.previous)
        centred = PlacedText{ *previous->text, *places.previous };
    std::vector<PlacedText> others = { { *lines.At(index).text, places.current } };
    if (places.next)
        others.push_back({ *next->text, *places.next });
    const HDC screen = GetDC(m_window);
    m_frame.Draw(screen, m_context.StripRect(), m_background, m_font.Get(), centred, others);
    m_frame.CopyTo(screen);
    ReleaseDC(m_window, screen);
}
