// A filter graph that plays nothing and writes down what is asked of it, in the words of the interfaces.
#pragma once

// Ahead of the seam, which puts other functions in the place of some names that are methods here.
#include <dshow.h>

#include "playback/media_graph.h"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace cardsong::test {

// What was asked, and what is to be answered.
struct GraphRecord {
    std::vector<std::string> calls;
    std::string missing; // the one interface that the graph lacks
    OAFilterState state = State_Stopped;
    HRESULT result = S_OK; // of every call that can fail
    LONGLONG position = 0; // of every question for a place
    std::deque<long> events;
    LONG visible = OATRUE;
    std::wstring path; // of the file that was to be rendered

    HRESULT Note(std::string call)
    {
        calls.push_back(std::move(call));
        return result;
    }
    std::vector<std::string> Take() { return std::exchange(calls, {}); }
};

// Lives as long as its record: references are only written down.
template <typename Interface>
class Recorded : public Interface {
public:
    Recorded(GraphRecord& record, std::string name) : m_record(record), m_name(std::move(name)) {}
    virtual ~Recorded() = default;

    HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override
    {
        m_record.Note("AddRef " + m_name);
        return 2;
    }
    ULONG WINAPI Release() override
    {
        m_record.Note("Release " + m_name);
        return 1;
    }

protected:
    HRESULT Note(std::string call) { return m_record.Note(std::move(call)); }
    GraphRecord& m_record;

private:
    std::string m_name;
};

template <typename Interface>
class RecordedDispatch : public Recorded<Interface> {
public:
    using Recorded<Interface>::Recorded;
    HRESULT WINAPI GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT WINAPI GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT WINAPI Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return E_NOTIMPL;
    }
};

class RecordedControl : public RecordedDispatch<IMediaControl> {
public:
    using RecordedDispatch::RecordedDispatch;
    HRESULT WINAPI Run() override { return Note("Run"); }
    HRESULT WINAPI Pause() override { return Note("Pause"); }
    HRESULT WINAPI Stop() override { return Note("Stop"); }
    HRESULT WINAPI GetState(LONG timeoutMs, OAFilterState* state) override
    {
        *state = m_record.state;
        return Note("GetState " + std::to_string(timeoutMs));
    }

    HRESULT WINAPI RenderFile(BSTR) override { return E_NOTIMPL; }
    HRESULT WINAPI AddSourceFilter(BSTR, IDispatch**) override { return E_NOTIMPL; }
    HRESULT WINAPI get_FilterCollection(IDispatch**) override { return E_NOTIMPL; }
    HRESULT WINAPI get_RegFilterCollection(IDispatch**) override { return E_NOTIMPL; }
    HRESULT WINAPI StopWhenReady() override { return E_NOTIMPL; }
};

class RecordedEvents : public RecordedDispatch<IMediaEventEx> {
public:
    using RecordedDispatch::RecordedDispatch;
    HRESULT WINAPI GetEvent(LONG* code, LONG_PTR* first, LONG_PTR* second, LONG timeoutMs) override
    {
        Note("GetEvent " + std::to_string(timeoutMs));
        if (m_record.events.empty())
            return E_ABORT;
        *code = m_record.events.front();
        *first = 11;
        *second = 22;
        m_record.events.pop_front();
        return S_OK;
    }
    HRESULT WINAPI FreeEventParams(LONG code, LONG_PTR first, LONG_PTR second) override
    {
        return Note("FreeEventParams " + std::to_string(code) + ' ' + std::to_string(first) + ' ' +
                    std::to_string(second));
    }
    HRESULT WINAPI SetNotifyWindow(OAHWND window, LONG message, LONG_PTR data) override
    {
        return Note("SetNotifyWindow " + std::to_string(window) + ' ' + std::to_string(message) + ' ' +
                    std::to_string(data));
    }

    HRESULT WINAPI GetEventHandle(OAEVENT*) override { return E_NOTIMPL; }
    HRESULT WINAPI WaitForCompletion(LONG, LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI CancelDefaultHandling(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI RestoreDefaultHandling(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI SetNotifyFlags(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI GetNotifyFlags(LONG*) override { return E_NOTIMPL; }
};

class RecordedAudio : public RecordedDispatch<IBasicAudio> {
public:
    using RecordedDispatch::RecordedDispatch;
    HRESULT WINAPI put_Volume(LONG volume) override { return Note("put_Volume " + std::to_string(volume)); }
    HRESULT WINAPI get_Volume(LONG* volume) override
    {
        *volume = -784;
        return Note("get_Volume");
    }
    HRESULT WINAPI put_Balance(LONG balance) override { return Note("put_Balance " + std::to_string(balance)); }
    HRESULT WINAPI get_Balance(LONG* balance) override
    {
        *balance = -300;
        return Note("get_Balance");
    }
};

class RecordedSeeking : public Recorded<IMediaSeeking> {
public:
    using Recorded::Recorded;
    HRESULT WINAPI SetTimeFormat(const GUID* format) override
    {
        return Note(*format == TIME_FORMAT_MEDIA_TIME ? "SetTimeFormat media time" : "SetTimeFormat other");
    }
    HRESULT WINAPI GetDuration(LONGLONG* place) override { return Answer("GetDuration", place); }
    HRESULT WINAPI GetStopPosition(LONGLONG* place) override { return Answer("GetStopPosition", place); }
    HRESULT WINAPI GetCurrentPosition(LONGLONG* place) override { return Answer("GetCurrentPosition", place); }
    HRESULT WINAPI SetPositions(LONGLONG* current, DWORD currentFlags, LONGLONG* stop, DWORD stopFlags) override
    {
        const auto text = [](const LONGLONG* place) { return place == nullptr ? "null" : std::to_string(*place); };
        return Note("SetPositions " + text(current) + ' ' + std::to_string(currentFlags) + ' ' + text(stop) + ' ' +
                    std::to_string(stopFlags));
    }
    HRESULT WINAPI SetRate(double rate) override { return Note("SetRate " + std::to_string(rate)); }
    HRESULT WINAPI GetRate(double* rate) override
    {
        *rate = 1.5;
        return Note("GetRate");
    }

    HRESULT WINAPI GetCapabilities(DWORD*) override { return E_NOTIMPL; }
    HRESULT WINAPI CheckCapabilities(DWORD*) override { return E_NOTIMPL; }
    HRESULT WINAPI IsFormatSupported(const GUID*) override { return E_NOTIMPL; }
    HRESULT WINAPI QueryPreferredFormat(GUID*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetTimeFormat(GUID*) override { return E_NOTIMPL; }
    HRESULT WINAPI IsUsingTimeFormat(const GUID*) override { return E_NOTIMPL; }
    HRESULT WINAPI ConvertTimeFormat(LONGLONG*, const GUID*, LONGLONG, const GUID*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetPositions(LONGLONG*, LONGLONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetAvailable(LONGLONG*, LONGLONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetPreroll(LONGLONG*) override { return E_NOTIMPL; }

private:
    HRESULT Answer(const char* question, LONGLONG* place)
    {
        *place = m_record.position;
        return Note(question);
    }
};

class RecordedWindow : public RecordedDispatch<IVideoWindow> {
public:
    using RecordedDispatch::RecordedDispatch;
    HRESULT WINAPI put_WindowStyle(LONG style) override { return Note("put_WindowStyle " + std::to_string(style)); }
    HRESULT WINAPI put_Visible(LONG visible) override { return Note("put_Visible " + std::to_string(visible)); }
    HRESULT WINAPI get_Visible(LONG* visible) override
    {
        *visible = m_record.visible;
        return Note("get_Visible");
    }
    HRESULT WINAPI put_Left(LONG left) override { return Note("put_Left " + std::to_string(left)); }
    HRESULT WINAPI put_Top(LONG top) override { return Note("put_Top " + std::to_string(top)); }
    HRESULT WINAPI put_Width(LONG width) override { return Note("put_Width " + std::to_string(width)); }
    HRESULT WINAPI put_Height(LONG height) override { return Note("put_Height " + std::to_string(height)); }
    HRESULT WINAPI put_Owner(OAHWND owner) override { return Note("put_Owner " + std::to_string(owner)); }
    HRESULT WINAPI put_MessageDrain(OAHWND drain) override { return Note("put_MessageDrain " + std::to_string(drain)); }
    HRESULT WINAPI put_FullScreenMode(LONG mode) override { return Note("put_FullScreenMode " + std::to_string(mode)); }
    HRESULT WINAPI get_FullScreenMode(LONG* mode) override
    {
        *mode = m_record.visible;
        return Note("get_FullScreenMode");
    }

    HRESULT WINAPI put_Caption(BSTR) override { return E_NOTIMPL; }
    HRESULT WINAPI get_Caption(BSTR*) override { return E_NOTIMPL; }
    HRESULT WINAPI get_WindowStyle(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI put_WindowStyleEx(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI get_WindowStyleEx(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI put_AutoShow(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI get_AutoShow(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI put_WindowState(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI get_WindowState(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI put_BackgroundPalette(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI get_BackgroundPalette(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI get_Left(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI get_Width(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI get_Top(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI get_Height(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI get_Owner(OAHWND*) override { return E_NOTIMPL; }
    HRESULT WINAPI get_MessageDrain(OAHWND*) override { return E_NOTIMPL; }
    HRESULT WINAPI get_BorderColor(LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI put_BorderColor(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI SetWindowForeground(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI NotifyOwnerMessage(OAHWND, LONG, LONG_PTR, LONG_PTR) override { return E_NOTIMPL; }
    HRESULT WINAPI SetWindowPosition(LONG, LONG, LONG, LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI GetWindowPosition(LONG*, LONG*, LONG*, LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetMinIdealImageSize(LONG*, LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetMaxIdealImageSize(LONG*, LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI GetRestorePosition(LONG*, LONG*, LONG*, LONG*) override { return E_NOTIMPL; }
    HRESULT WINAPI HideCursor(LONG) override { return E_NOTIMPL; }
    HRESULT WINAPI IsCursorHidden(LONG*) override { return E_NOTIMPL; }
};

class RecordedGraph : public Recorded<IGraphBuilder> {
public:
    explicit RecordedGraph(GraphRecord& record) : Recorded(record, "graph") {}
    HRESULT WINAPI QueryInterface(REFIID id, void** pointer) override
    {
        *pointer = nullptr;
        for (const Part& part : m_parts) {
            if (part.id != id)
                continue;
            m_record.calls.push_back(std::string("Query ") + part.name);
            if (m_record.missing == part.name)
                return E_NOINTERFACE;
            *pointer = part.pointer;
            return S_OK;
        }
        m_record.calls.push_back("Query something else");
        return E_NOINTERFACE;
    }
    HRESULT WINAPI RenderFile(LPCWSTR path, LPCWSTR playList) override
    {
        m_record.path = path;
        return Note(playList == nullptr ? "RenderFile null" : "RenderFile list");
    }
    HRESULT WINAPI ConnectDirect(IPin*, IPin*, const AM_MEDIA_TYPE*) override { return Note("ConnectDirect"); }
    HRESULT WINAPI Disconnect(IPin*) override { return Note("Disconnect"); }

    HRESULT WINAPI AddFilter(IBaseFilter*, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT WINAPI RemoveFilter(IBaseFilter*) override { return E_NOTIMPL; }
    HRESULT WINAPI EnumFilters(IEnumFilters**) override { return E_NOTIMPL; }
    HRESULT WINAPI FindFilterByName(LPCWSTR, IBaseFilter**) override { return E_NOTIMPL; }
    HRESULT WINAPI Reconnect(IPin*) override { return E_NOTIMPL; }
    HRESULT WINAPI SetDefaultSyncSource() override { return E_NOTIMPL; }
    HRESULT WINAPI Connect(IPin*, IPin*) override { return E_NOTIMPL; }
    HRESULT WINAPI Render(IPin*) override { return E_NOTIMPL; }
    HRESULT WINAPI AddSourceFilter(LPCWSTR, LPCWSTR, IBaseFilter**) override { return E_NOTIMPL; }
    HRESULT WINAPI SetLogFile(DWORD_PTR) override { return E_NOTIMPL; }
    HRESULT WINAPI Abort() override { return E_NOTIMPL; }
    HRESULT WINAPI ShouldOperationContinue() override { return E_NOTIMPL; }

private:
    struct Part {
        GUID id;
        const char* name;
        void* pointer;
    };

    RecordedControl m_control{ m_record, "IMediaControl" };
    RecordedEvents m_events{ m_record, "IMediaEventEx" };
    // Nothing of its own is ever called.
    Recorded<IUnknown> m_video{ m_record, "IBasicVideo" };
    RecordedAudio m_audio{ m_record, "IBasicAudio" };
    RecordedWindow m_window{ m_record, "IVideoWindow" };
    RecordedSeeking m_seeking{ m_record, "IMediaSeeking" };
    const Part m_parts[6] = {
        { IID_IMediaControl, "IMediaControl", static_cast<IMediaControl*>(&m_control) },
        { IID_IMediaEventEx, "IMediaEventEx", static_cast<IMediaEventEx*>(&m_events) },
        { IID_IBasicVideo, "IBasicVideo", static_cast<IUnknown*>(&m_video) },
        { IID_IBasicAudio, "IBasicAudio", static_cast<IBasicAudio*>(&m_audio) },
        { IID_IVideoWindow, "IVideoWindow", static_cast<IVideoWindow*>(&m_window) },
        { IID_IMediaSeeking, "IMediaSeeking", static_cast<IMediaSeeking*>(&m_seeking) },
    };
};

} // namespace cardsong::test
