// The image library's animations, which the desktop lacks: one at a time, each on a thread of its own.
#include "platform/device_tree.h"
#include "platform/windows/gdi/gif_animation.h"

#include <future>
#include <mutex>
#include <thread>

namespace cardsong::gdi {
namespace {

constexpr int kForEver = -1;

struct Playing {
    std::wstring file;
    HDC target;
    POINT corner;
    int loops;
    COLORREF key;
};

class Player {
public:
    explicit Player(const Playing& playing) : m_playing(playing), m_stop(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
    ~Player()
    {
        SetEvent(m_stop);
        if (m_thread.joinable())
            m_thread.join();
        CloseHandle(m_stop);
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // Returns when the first frame is drawn; false, without a thread, when there is none.
    bool Start()
    {
        std::promise<bool> started;
        auto isDrawn = started.get_future();
        m_thread = std::thread([this, promise = std::move(started)]() mutable { Run(promise); });
        return isDrawn.get();
    }

private:
    void Run(std::promise<bool>& started) const
    {
        GifAnimation animation(m_playing.key);
        const bool isDrawn = animation.Open(m_playing.file.c_str()) && animation.ShowNextFrame();
        if (isDrawn)
            DrawFrame(animation);
        started.set_value(isDrawn);
        if (isDrawn && animation.FrameCount() > 1)
            PlayOn(animation);
    }

    void PlayOn(GifAnimation& animation) const
    {
        int loops = m_playing.loops;
        while (WaitForSingleObject(m_stop, animation.DelayMs()) == WAIT_TIMEOUT) {
            if (animation.IsLastFrame() && loops != kForEver && --loops <= 0)
                return;
            if (!animation.ShowNextFrame())
                return;
            DrawFrame(animation);
        }
    }

    void DrawFrame(const GifAnimation& animation) const
    {
        const HDC source = CreateCompatibleDC(m_playing.target);
        const HGDIOBJ before = SelectObject(source, animation.Picture());
        const auto widthPx = static_cast<int>(animation.WidthPx());
        const auto heightPx = static_cast<int>(animation.HeightPx());
        TransparentBlt(m_playing.target, m_playing.corner.x, m_playing.corner.y, widthPx, heightPx, source, 0, 0,
                       widthPx, heightPx, m_playing.key);
        SelectObject(source, before);
        DeleteDC(source);
        GdiFlush(); // the system collects what each thread draws
    }

    const Playing m_playing;
    const HANDLE m_stop;
    std::thread m_thread;
};

std::mutex g_playerLock;

std::unique_ptr<Player>& CurrentPlayer()
{
    static auto* player = new std::unique_ptr<Player>; // an animation may outlive the program's own statics
    return *player;
}

} // namespace
} // namespace cardsong::gdi

using namespace cardsong::gdi;

BOOL PlayGifAnim(LPCWSTR path, HDC target, const RECT* place, HWND, DWORD, int loops, COLORREF key)
{
    const std::lock_guard lock(g_playerLock);
    CurrentPlayer().reset();
    if (path == nullptr || *path == L'\0' || place == nullptr || GetObjectType(target) == 0)
        return FALSE;
    const auto file = cardsong::kernel::FindHostPath(path);
    if (!file)
        return FALSE;
    auto player = std::make_unique<Player>(Playing{ *file, target, { place->left, place->top }, loops, key });
    if (!player->Start())
        return FALSE;
    CurrentPlayer() = std::move(player);
    return TRUE;
}

BOOL StopGifAnim()
{
    const std::lock_guard lock(g_playerLock);
    const bool wasPlaying = CurrentPlayer() != nullptr;
    CurrentPlayer().reset();
    return wasPlaying;
}
