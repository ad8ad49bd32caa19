// The image library's animations: one at a time, each on a thread of its own.
#include "platform/imaging/gif_animation.h"

#include <memory>
#include <mutex>

namespace cardsong::imaging {

namespace {

constexpr int kForEver = -1;

struct Target {
    HDC context;
    POINT corner;
    COLORREF key;
};

class Player {
public:
    Player(const Target& target, int loops) : m_target(target), m_loops(loops), m_animation(target.key) {}
    // Ends the thread first.
    ~Player()
    {
        if (m_thread != nullptr) {
            EventModify(m_stop, EVENT_SET);
            WaitForSingleObject(m_thread, INFINITE);
            CloseHandle(m_thread);
        }
        if (m_stop != nullptr)
            CloseHandle(m_stop);
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // Draws the first frame and leaves the others to a thread; false when there is none.
    bool Start(LPCWSTR path)
    {
        if (!m_animation.Open(path) || !m_animation.ShowNextFrame())
            return false;
        DrawFrame();
        if (m_animation.FrameCount() == 1)
            return true;
        m_stop = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        if (m_stop != nullptr)
            m_thread = CreateThread(nullptr, 0, PlayOn, this, 0, nullptr);
        return m_thread != nullptr;
    }

private:
    static DWORD WINAPI PlayOn(LPVOID player)
    {
        static_cast<Player*>(player)->PlayOn();
        return 0;
    }

    void PlayOn()
    {
        while (WaitForSingleObject(m_stop, m_animation.DelayMs()) == WAIT_TIMEOUT) {
            if (m_animation.IsLastFrame() && m_loops != kForEver && --m_loops <= 0)
                return;
            if (!m_animation.ShowNextFrame())
                return;
            DrawFrame();
        }
    }

    void DrawFrame() const
    {
        const HDC source = CreateCompatibleDC(m_target.context);
        const HGDIOBJ before = SelectObject(source, m_animation.Picture());
        const int widthPx = m_animation.WidthPx();
        const int heightPx = m_animation.HeightPx();
        TransparentImage(m_target.context, m_target.corner.x, m_target.corner.y, widthPx, heightPx, source, 0, 0,
                         widthPx, heightPx, m_target.key);
        SelectObject(source, before);
        DeleteDC(source);
        GdiFlush(); // the system may collect what each thread draws
    }

    const Target m_target;
    int m_loops;
    GifAnimation m_animation;
    HANDLE m_stop = nullptr;
    HANDLE m_thread = nullptr;
};

std::mutex g_playerLock;

std::unique_ptr<Player>& CurrentPlayer()
{
    static auto* const s_player = new std::unique_ptr<Player>; // an animation may outlive the program's own statics
    return *s_player;
}

bool CanDrawOn(HDC context)
{
    return context != nullptr && GetDeviceCaps(context, BITSPIXEL) != 0;
}

} // namespace

} // namespace cardsong::imaging

using namespace cardsong::imaging;

BOOL PlayGifAnim(LPCWSTR path, HDC target, const RECT* place, HWND, DWORD, int loops, COLORREF key)
{
    const std::lock_guard lock(g_playerLock);
    CurrentPlayer().reset();
    if (path == nullptr || place == nullptr || !CanDrawOn(target))
        return FALSE;
    auto player = std::make_unique<Player>(Target{ target, { place->left, place->top }, key }, loops);
    if (!player->Start(path))
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
