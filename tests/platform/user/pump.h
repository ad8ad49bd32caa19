// Helpers for tests of windows: retrieving messages, and a window that remembers what it was told. Knows the public API
// only.
#pragma once

#include "platform/ce.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

// Retrieves and dispatches until nothing waits.
inline void PumpMessages()
{
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

struct SeenMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

using MessageHandler = std::function<std::optional<LRESULT>(HWND, UINT, WPARAM, LPARAM)>;

struct WindowOptions {
    DWORD style = WS_POPUP;
    DWORD exStyle = 0;
    RECT rect{ 0, 0, 100, 100 }; // left, top, width, height
    HWND parent = nullptr;
    int id = 0;
    UINT classStyle = 0;
    HBRUSH background = nullptr;
    int extraBytes = 0;
    MessageHandler handler{}; // an empty answer: the default procedure's
};

// A window of a class of its own; destroyed with the object.
class TestWindow {
public:
    explicit TestWindow(const WindowOptions& options = {}) : m_handler(options.handler)
    {
        static int s_number = 0;
        m_className = TEXT("CardsongTest");
        for (int rest = ++s_number; rest != 0; rest /= 10)
            m_className.push_back(static_cast<WCHAR>('0' + rest % 10));
        WNDCLASSW windowClass{};
        windowClass.style = options.classStyle;
        windowClass.lpfnWndProc = Procedure;
        windowClass.cbWndExtra = options.extraBytes;
        windowClass.hbrBackground = options.background;
        windowClass.lpszClassName = m_className.c_str();
        RegisterClassW(&windowClass);
        const RECT& rect = options.rect;
        const auto id = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(options.id));
        m_window = CreateWindowExW(options.exStyle, m_className.c_str(), nullptr, options.style, rect.left, rect.top,
                                   rect.right, rect.bottom, options.parent, id, nullptr, this);
    }
    ~TestWindow()
    {
        if (IsWindow(m_window))
            DestroyWindow(m_window);
        UnregisterClassW(m_className.c_str(), nullptr);
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    operator HWND() const { return m_window; }
    LPCWSTR ClassName() const { return m_className.c_str(); }
    void Handle(MessageHandler handler) { m_handler = std::move(handler); }
    void Forget() { m_seen.clear(); }
    const std::vector<SeenMessage>& Seen() const { return m_seen; }
    int Count(UINT message) const
    {
        return static_cast<int>(
            std::count_if(m_seen.begin(), m_seen.end(), [&](const auto& seen) { return seen.message == message; }));
    }
    // What it was told of these messages, in order.
    std::vector<UINT> Order(const std::vector<UINT>& wanted) const
    {
        std::vector<UINT> order;
        for (const auto& seen : m_seen)
            if (std::find(wanted.begin(), wanted.end(), seen.message) != wanted.end())
                order.push_back(seen.message);
        return order;
    }
    std::optional<SeenMessage> Last(UINT message) const
    {
        for (auto seen = m_seen.rbegin(); seen != m_seen.rend(); ++seen)
            if (seen->message == message)
                return *seen;
        return std::nullopt;
    }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_NCCREATE) {
            const auto* const description = reinterpret_cast<const CREATESTRUCTW*>(lParam);
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(description->lpCreateParams));
        }
        auto* const self = reinterpret_cast<TestWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self == nullptr)
            return DefWindowProcW(window, message, wParam, lParam);
        self->m_seen.push_back({ window, message, wParam, lParam });
        if (self->m_handler)
            if (const auto answer = self->m_handler(window, message, wParam, lParam))
                return *answer;
        return DefWindowProcW(window, message, wParam, lParam);
    }

    MessageHandler m_handler;
    std::vector<SeenMessage> m_seen;
    std::basic_string<WCHAR> m_className;
    HWND m_window = nullptr;
};

// A handler that paints nothing but validates, so that a loop over messages ends.
inline std::optional<LRESULT> JustValidate(HWND window, UINT message, WPARAM, LPARAM)
{
    if (message != WM_PAINT)
        return std::nullopt;
    ValidateRect(window, nullptr);
    return 0;
}

inline bool operator==(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
