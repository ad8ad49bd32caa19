#include "gui/gif_animation.h"

#include "common/gdi_handles.h"
#include "common/kernel_handles.h"
#include "gui/gif_bitmap.h"
#include "gui/gif_decoder.h"

#include <atomic>

namespace {

constexpr COLORREF kBackground = RGB(255, 255, 255);
constexpr DWORD kFirstWaitMs = 1000;
constexpr DWORD kMsPerHundredth = 10;

GifAnimation* g_playing = nullptr; // the only one that plays

} // namespace

// A file that is open and the thread that plays it. The thread alone uses decoder and bitmap while it runs.
class GifAnimation::Playback {
public:
    Playback(HWND window, LPCWSTR path) : m_window(window), m_decoder(path, kBackground) {}
    ~Playback();

    bool Start();
    void SetPaused(bool isPaused);
    std::uint16_t WidthPx() const { return m_decoder.Screen().widthPx; }
    std::uint16_t HeightPx() const { return m_decoder.Screen().heightPx; }

private:
    static DWORD WINAPI Run(LPVOID playback);

    void Play();
    void Draw() const;
    bool WaitForNext(DWORD waitMs);

    HWND m_window;
    GifDecoder m_decoder;
    UniqueBitmap m_bitmap;
    std::uint16_t* m_bits = nullptr;
    UniqueKernelObject m_wake; // set once for each change of the two below
    std::atomic<bool> m_isPaused = false;
    std::atomic<bool> m_isStopping = false;
    UniqueKernelObject m_thread;
};

bool GifAnimation::Playback::Start()
{
    if (!m_decoder.Open())
        return false;
    m_bitmap.Reset(CreateRgb565Dib(WidthPx(), HeightPx(), &m_bits));
    m_wake.Reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    if (!m_bitmap || !m_wake)
        return false;
    m_thread.Reset(CreateThread(nullptr, 0, Run, this, 0, nullptr));
    return static_cast<bool>(m_thread);
}

GifAnimation::Playback::~Playback()
{
    if (!m_thread)
        return;
    m_isStopping = true;
    EventModify(m_wake.Get(), EVENT_SET);
    WaitForSingleObject(m_thread.Get(), INFINITE);
}

void GifAnimation::Playback::SetPaused(bool isPaused)
{
    m_isPaused = isPaused;
    EventModify(m_wake.Get(), EVENT_SET);
}

DWORD GifAnimation::Playback::Run(LPVOID playback)
{
    static_cast<Playback*>(playback)->Play();
    return 0;
}

void GifAnimation::Playback::Play()
{
    DWORD waitMs = kFirstWaitMs;
    do {
        const GifFrame* const frame = m_decoder.DecodeNextFrame();
        if (frame == nullptr)
            continue;
        CopyFramePixels(frame->canvas, m_bits, WidthPx(), HeightPx());
        Draw();
        waitMs = frame->control.delayHundredths * kMsPerHundredth;
    } while (WaitForNext(waitMs));
}

void GifAnimation::Playback::Draw() const
{
    const UniqueMemoryContext source(CreateCompatibleDC(nullptr));
    const SelectedObject selected(source.Get(), m_bitmap.Get());
    const HDC target = GetDC(m_window);
    if (target == nullptr) // the window is gone
        return;
    BitBlt(target, 0, 0, WidthPx(), HeightPx(), source.Get(), 0, 0, SRCCOPY);
    ReleaseDC(m_window, target);
}

// True when the next picture is due; false as soon as the animation is to end.
bool GifAnimation::Playback::WaitForNext(DWORD waitMs)
{
    const DWORD startMs = GetTickCount();
    for (;;) {
        const DWORD passedMs = GetTickCount() - startMs;
        const DWORD restMs = passedMs < waitMs ? waitMs - passedMs : 0;
        if (restMs == 0)
            Sleep(0); // pictures without a delay leave time to other threads, and are shown
        const DWORD result = WaitForSingleObject(m_wake.Get(), m_isPaused ? INFINITE : restMs);
        if (m_isStopping)
            return false;
        if (result == WAIT_TIMEOUT)
            return true;
    }
}

GifAnimation::GifAnimation() = default;

GifAnimation::~GifAnimation()
{
    Stop();
}

bool GifAnimation::Start(HWND window, LPCWSTR path, std::uint16_t& widthPx, std::uint16_t& heightPx)
{
    if (window == nullptr || path == nullptr)
        return false;
    if (g_playing != nullptr)
        g_playing->Stop();
    m_playback = std::make_unique<Playback>(window, path);
    if (!m_playback->Start()) {
        m_playback.reset();
        return false;
    }
    widthPx = m_playback->WidthPx();
    heightPx = m_playback->HeightPx();
    g_playing = this;
    return true;
}

void GifAnimation::Pause()
{
    if (m_playback)
        m_playback->SetPaused(true);
}

void GifAnimation::Resume()
{
    if (m_playback)
        m_playback->SetPaused(false);
}

void GifAnimation::Stop()
{
    if (g_playing == this)
        g_playing = nullptr;
    m_playback.reset();
}
