#include "gui/skin_list_window.h"

#include "common/string_table.h"
#include "gui/soft_key_layout.h"
#include "platform/screen_size.h"

namespace {

constexpr int kBufferWidthPx = 480; // wider and higher than the window, on purpose
constexpr int kBufferHeightPx = 272;
static_assert(kBufferWidthPx >= kScreenWidthPx && kBufferHeightPx >= kScreenHeightPx);
constexpr UINT_PTR kSwingTimerId = 1;
constexpr UINT kSwingPeriodMs = 500;

} // namespace

SkinListWnd* SkinListWnd::s_current = nullptr;

const SkinListWnd::MessageEntry SkinListWnd::kMessages[] = {
    { WM_CREATE, &SkinListWnd::OnCreate },     { WM_DESTROY, &SkinListWnd::OnDestroy },
    { WM_PAINT, &SkinListWnd::OnPaint },       { WM_ERASEBKGND, &SkinListWnd::OnEraseBackground },
    { WM_DRAWITEM, &SkinListWnd::OnDrawItem }, { WM_KEYDOWN, &SkinListWnd::OnKeyDown },
    { WM_COMMAND, &SkinListWnd::OnCommand },   { WM_LBUTTONDOWN, &SkinListWnd::OnTap },
    { WM_TIMER, &SkinListWnd::OnTimer },       { WM_CTLCOLORSTATIC, &SkinListWnd::OnStaticColor },
    { WM_CLOSE, &SkinListWnd::OnClose },
};

// A message may destroy the object: after a handler nothing of it is touched.
LRESULT CALLBACK SkinListWnd::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CREATE) {
        auto* const made = static_cast<SkinListWnd*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
        made->m_window = window;
    }
    auto* const list = reinterpret_cast<SkinListWnd*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (list != nullptr) {
        for (const MessageEntry& entry : kMessages)
            if (entry.message == message)
                return (list->*entry.handler)(wParam, lParam);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

SkinListWnd::SkinListWnd()
{
    s_current = this;
}

SkinListWnd::~SkinListWnd()
{
    if (m_window != nullptr)
        DestroyWindow(m_window);
    if (s_current == this)
        s_current = nullptr;
}

void SkinListWnd::SetSoftKeys(int count, std::span<const int> ids, std::span<const ButtonCaption> captions,
                              std::span<const ButtonImageSet> imageSets)
{
    m_softKeyCount = count;
    m_softKeyIds.assign(ids.begin(), ids.end());
    m_softKeyCaptions.assign(captions.begin(), captions.end());
    m_softKeyImages.assign(imageSets.begin(), imageSets.end());
}

HWND SkinListWnd::Create(HWND owner, LPCWSTR title, SkinListRedraw redraw, UINT controlId)
{
    const bool hasSoftKeys = !m_softKeyIds.empty() && PlanSoftKeys(m_softKeyCount, m_softKeyIds);
    if (m_window != nullptr || m_model.Mode() == SkinListMode::None || !hasSoftKeys)
        return nullptr;
    m_owner = owner;
    m_redraw = redraw;
    m_controlId = controlId;
    m_title.Set(title);
    m_model.Rewind();
    if (!m_class.Register(m_title.Text(), Procedure))
        return nullptr;
    // The object goes along, so that each of several lists finds its own.
    return CreateWindowExW(0, m_class.Name(), m_title.Text().c_str(), WS_POPUP | WS_VISIBLE, 0, 0, kScreenWidthPx,
                           kScreenHeightPx, m_below != nullptr ? m_below : owner,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(controlId)), g_hInstance, this);
}

LRESULT SkinListWnd::OnCreate(WPARAM, LPARAM)
{
    m_painter.emplace();
    m_softKeys.Create(m_window, Strings(), m_softKeyCount, m_softKeyIds, m_softKeyCaptions, m_softKeyImages);
    EnableScrollButtons();
    if (m_longText == SkinListLongText::Swings)
        SetTimer(m_window, kSwingTimerId, kSwingPeriodMs, nullptr);
    return 0;
}

LRESULT SkinListWnd::OnDestroy(WPARAM, LPARAM)
{
    SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    m_window = nullptr;
    m_softKeys.Destroy();
    m_buffer.reset();
    m_painter.reset();
    return 0;
}

LRESULT SkinListWnd::OnClose(WPARAM, LPARAM)
{
    KillTimer(m_window, kSwingTimerId);
    DestroyWindow(m_window);
    return 0;
}

void SkinListWnd::Close()
{
    if (m_window != nullptr)
        SendMessageW(m_window, WM_CLOSE, 0, 0);
}

// ---- painting ----

LRESULT SkinListWnd::OnPaint(WPARAM, LPARAM)
{
    PAINTSTRUCT paint;
    const HDC screen = BeginPaint(m_window, &paint);
    if (!m_buffer)
        m_buffer.emplace(screen, kBufferWidthPx, kBufferHeightPx);
    m_painter->Draw(m_buffer->Context(), m_model, m_title.OnPage(CurrentPage(), PageCount()));
    m_softKeys.DrawAll(m_buffer->Context());
    m_buffer->CopyTo(screen);
    EndPaint(m_window, &paint);
    return 0;
}

// Every paint covers the whole window.
LRESULT SkinListWnd::OnEraseBackground(WPARAM, LPARAM)
{
    return 1;
}

LRESULT SkinListWnd::OnDrawItem(WPARAM, LPARAM request)
{
    m_softKeys.DrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(request));
    return TRUE;
}

LRESULT SkinListWnd::OnStaticColor(WPARAM, LPARAM)
{
    return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
}

void SkinListWnd::Repaint(const RECT& rect, BOOL erase)
{
    if (m_window != nullptr) // no window would mean all windows
        InvalidateRect(m_window, &rect, erase);
}

void SkinListWnd::RepaintAll()
{
    Repaint({ 0, 0, kScreenWidthPx, kScreenHeightPx });
}

void SkinListWnd::RepaintRow(int row)
{
    if (row != kNoSelection)
        Repaint(kSkinListRowRects[static_cast<std::size_t>(row)]);
}

void SkinListWnd::RepaintItem(std::int32_t index)
{
    for (int row = 0; row < kSkinListRows; ++row)
        if (m_model.ItemOfRow(row) == index)
            RepaintRow(row);
}

void SkinListWnd::SelectItem(std::int32_t index)
{
    const int before = m_model.SelectedRow();
    m_model.SelectItem(index);
    if (m_model.SelectedRow() == before)
        return;
    RepaintRow(before);
    RepaintRow(m_model.SelectedRow());
}

void SkinListWnd::ShowItem(std::int32_t index)
{
    const std::int32_t before = m_model.PageIndex();
    m_model.TurnToPageOf(index);
    if (m_model.PageIndex() != before)
        PageTurned();
}

// ---- input ----

LRESULT SkinListWnd::OnKeyDown(WPARAM key, LPARAM)
{
    if (key == VK_F24)
        SendMessageW(m_window, WM_CLOSE, 0, 0);
    else
        m_softKeys.ArrowKey(key);
    return 0;
}

LRESULT SkinListWnd::OnCommand(WPARAM command, LPARAM)
{
    const UINT id = LOWORD(command);
    if (id != kUpButtonId && id != kDownButtonId)
        SendMessageW(m_owner, WM_COMMAND, id, SelectedIndex());
    else if (id == kUpButtonId ? m_model.PageUp() : m_model.PageDown())
        PageTurned();
    return 0;
}

// A tap beside the rows is not told of, whatever is selected.
LRESULT SkinListWnd::OnTap(WPARAM, LPARAM place)
{
    const POINT point = { static_cast<SHORT>(LOWORD(static_cast<ULONG_PTR>(place))),
                          static_cast<SHORT>(HIWORD(static_cast<ULONG_PTR>(place))) };
    const auto row = SkinListRowAt(point);
    const int before = m_model.SelectedRow();
    if (!row || !m_model.Select(*row))
        return 0;
    if (before != *row)
        RepaintRow(before);
    RepaintRow(*row);
    SendMessageW(m_owner, WM_NOTIFY, m_controlId, SelectedIndex());
    return 0;
}

LRESULT SkinListWnd::OnTimer(WPARAM id, LPARAM)
{
    if (id != kSwingTimerId)
        return 0;
    const HDC context = GetDC(m_window);
    const bool hasMoved = m_model.SwingText([&](WStringView text) { return m_painter->MainTextWidth(context, text); });
    ReleaseDC(m_window, context);
    if (hasMoved)
        RepaintRow(m_model.SelectedRow());
    return 0;
}

// ---- pages ----

void SkinListWnd::SetItemCount(std::int32_t count)
{
    m_model.SetItemCount(count);
    EnableScrollButtons();
    if (m_redraw == SkinListRedraw::AtOnce)
        RepaintAll();
}

void SkinListWnd::PageTurned()
{
    EnableScrollButtons();
    if (m_redraw == SkinListRedraw::AtOnce)
        RepaintAll();
}

void SkinListWnd::EnableScrollButtons()
{
    m_softKeys.Enable(kUpButtonId, !m_model.IsFirstPage());
    m_softKeys.Enable(kDownButtonId, !m_model.IsLastPage());
}

// ---- texts ----

void SkinListWnd::SetTitle(LPCWSTR text)
{
    m_title.Set(text);
    Repaint(kSkinListTitleRect, TRUE);
}

void SkinListWnd::SetTitleString(UINT stringId)
{
    m_title.SetString(stringId);
    ReloadTitle();
}

void SkinListWnd::ReloadTitle()
{
    if (!m_title.IsString())
        return;
    m_title.Reload(Strings());
    Repaint(kSkinListTitleRect, TRUE);
}

HMODULE SkinListWnd::Strings()
{
    if (!m_strings)
        m_strings.Reset(LoadStringModule());
    return m_strings.Get();
}

void SkinListWnd::LanguageChanged()
{
    m_strings.Reset(LoadStringModule());
    ReloadTitle();
    m_softKeys.ReloadCaption(0, m_strings.Get());
    SetItemCount(m_model.ItemCount());
    RepaintAll(); // fonts go with the language, too
}
