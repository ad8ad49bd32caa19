// What the engine on DirectShow asks of a filter graph, call by call, and what it adds to the answers.
#include "tests/playback/recording_graph.h"

#include "tests/playback/engine_test.h"

using namespace cardsong::test;

namespace {

using Calls = std::vector<std::string>;

class DirectShowTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_graph.Attach(&m_recorder));
        m_record.Take();
    }
    void TearDown() override { m_record.result = S_OK; }

    Apartment m_apartment;
    ScratchDevice m_device;
    GraphRecord m_record;
    RecordedGraph m_recorder{ m_record };
    MediaGraph m_graph;
};

// ---- interfaces ----

TEST_F(DirectShowTest, InterfacesAreAskedForInOrderAndTimeIsMediaTime)
{
    m_graph.ReleaseAll();
    m_record.Take();
    EXPECT_TRUE(m_graph.Attach(&m_recorder));
    EXPECT_EQ(m_record.Take(),
              (Calls{ "AddRef graph", "Query IMediaControl", "Query IMediaEventEx", "Query IBasicVideo",
                      "Query IBasicAudio", "Query IVideoWindow", "Query IMediaSeeking", "SetTimeFormat media time" }));
}

TEST_F(DirectShowTest, InterfacesAreReleasedInOrderAndTheWindowIsLetGoFirst)
{
    m_graph.ReleaseAll();
    EXPECT_EQ(m_record.Take(), (Calls{ "Release IMediaSeeking", "Release IMediaControl", "Release IMediaEventEx",
                                       "Release IBasicVideo", "Release IBasicAudio", "put_Visible 0",
                                       "put_MessageDrain 0", "put_Owner 0", "Release IVideoWindow", "Release graph" }));
    m_graph.ReleaseAll();
    EXPECT_EQ(m_record.Take(), Calls{});
}

TEST_F(DirectShowTest, AttachReleasesWhatWasThere)
{
    EXPECT_TRUE(m_graph.Attach(&m_recorder));
    const Calls calls = m_record.Take();
    ASSERT_EQ(calls.size(), 18U);
    EXPECT_EQ(calls.front(), "Release IMediaSeeking");
    EXPECT_EQ(calls[9], "Release graph");
    EXPECT_EQ(calls[10], "AddRef graph");
    EXPECT_FALSE(m_graph.Init()) << "there is a graph already";
}

TEST_F(DirectShowTest, EachMissingInterfaceFailsTheAttachAndOnlyItsOwnCalls)
{
    struct Case {
        const char* missing;
        bool runs, seeks, sounds, notices, shows;
    };
    const Case cases[] = {
        { "IMediaControl", false, true, true, true, true }, { "IMediaEventEx", true, true, true, false, true },
        { "IBasicVideo", true, true, true, true, true },    { "IBasicAudio", true, true, false, true, true },
        { "IVideoWindow", true, true, true, true, false },  { "IMediaSeeking", true, false, true, true, true },
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.missing);
        m_record.missing = one.missing;
        EXPECT_FALSE(m_graph.Attach(&m_recorder));
        EXPECT_EQ(m_graph.Run() && m_graph.IsStopped(), one.runs);
        EXPECT_EQ(m_graph.SetPosition(1.0), one.seeks);
        EXPECT_EQ(m_graph.SetVolume(-100), one.sounds);
        EXPECT_EQ(m_graph.SetNotifyWindow(nullptr), one.notices);
        EXPECT_EQ(m_graph.SetVideoRect(0, 0, 1, 1), one.shows);
    }
}

TEST_F(DirectShowTest, EventInterfaceIsLent)
{
    IMediaEventEx* const events = m_graph.GetEventInterface();
    EXPECT_NE(events, nullptr);
    EXPECT_EQ(m_record.Take(), Calls{}) << "no reference is taken";
    m_graph.ReleaseAll();
    EXPECT_EQ(m_graph.GetEventInterface(), nullptr);
}

// ---- songs and states ----

TEST_F(DirectShowTest, SongIsRenderedFromItsHostPath)
{
    m_device.WriteFile("card/tone.mp3", Sample("short_tone.mp3"));
    EXPECT_TRUE(m_graph.RenderFile(TEXT("\\SDMMC\\Tone.mp3")));
    EXPECT_EQ(m_record.Take(), Calls{ "RenderFile null" });
    EXPECT_TRUE(std::filesystem::equivalent(m_record.path, m_device.CardDirectory() + "/tone.mp3"));
}

TEST_F(DirectShowTest, MusicThatEveryDecoderRefusesHasNoKnownLength)
{
    m_device.WriteFile("card/tone.mp3", Sample("short_tone.mp3"));
    for (const HRESULT refusal : { VFW_E_CANNOT_RENDER, VFW_E_UNSUPPORTED_STREAM, VFW_E_UNSUPPORTED_AUDIO,
                                   VFW_E_NO_AUDIO_HARDWARE, REGDB_E_CLASSNOTREG, E_FAIL }) {
        SCOPED_TRACE(refusal);
        m_record.result = S_OK;
        m_graph.Attach(&m_recorder);
        m_record.result = refusal;
        EXPECT_FALSE(m_graph.RenderFile(TEXT("\\SDMMC\\tone.mp3")));
        double seconds = 7.0;
        EXPECT_FALSE(m_graph.GetDuration(seconds));
        EXPECT_EQ(seconds, 7.0);
    }
}

TEST_F(DirectShowTest, MusicThatIsRefusedRunsThroughASilentSecondAndNotThroughTheGraph)
{
    m_device.WriteFile("card/tone.mp3", Sample("short_tone.mp3"));
    m_record.result = VFW_E_CANNOT_RENDER;
    EXPECT_FALSE(m_graph.RenderFile(TEXT("\\SDMMC\\tone.mp3")));
    m_record.Take();
    EXPECT_TRUE(m_graph.IsStopped());
    EXPECT_TRUE(m_graph.Pause());
    EXPECT_TRUE(m_graph.IsPaused());
    EXPECT_TRUE(m_graph.SetPosition(-2.0));
    double seconds = 7.0;
    EXPECT_TRUE(m_graph.GetCurrentPosition(seconds));
    EXPECT_EQ(seconds, 0.0);
    EXPECT_TRUE(m_graph.SetRate(1.5) && m_graph.GetRate(seconds));
    EXPECT_EQ(seconds, 1.5);
    EXPECT_TRUE(m_graph.GetStopPosition(seconds));
    EXPECT_EQ(seconds, 1.0);
    EXPECT_FALSE(m_graph.SetPositions(0.0, 0.5));
    EXPECT_TRUE(m_graph.Run());
    EXPECT_TRUE(m_graph.IsRunning());
    EXPECT_EQ(m_record.Take(), Calls{});
    long code = 0;
    EXPECT_TRUE(Await([&] { return m_graph.TakeEvent(code); }));
    EXPECT_EQ(code, kGraphComplete);
    EXPECT_TRUE(m_graph.Stop());
    EXPECT_TRUE(m_graph.IsStopped());
    m_record.result = S_OK;
    EXPECT_FALSE(m_graph.TakeEvent(code));
}

TEST_F(DirectShowTest, WhatHoldsNoSongIsNotRenderedAndLastsNoTime)
{
    m_device.WriteFile("card/text.mp3", "no song");
    m_record.result = E_NOTIMPL;
    for (const WCHAR* path : { TEXT("\\SDMMC\\text.mp3"), TEXT("\\SDMMC\\missing.mp3") }) {
        m_graph.ReleaseAll();
        m_graph.Attach(&m_recorder);
        m_record.Take();
        double seconds = 7.0;
        EXPECT_FALSE(m_graph.GetDuration(seconds));
        EXPECT_FALSE(m_graph.RenderFile(path));
        EXPECT_TRUE(m_graph.GetDuration(seconds));
        EXPECT_EQ(seconds, 0.0);
        EXPECT_EQ(m_record.Take(), (Calls{ "GetDuration", "GetDuration" }));
    }
    EXPECT_FALSE(m_graph.RenderFile(nullptr));
}

TEST_F(DirectShowTest, RunHidesThePictureAndRunsUnlessItRuns)
{
    EXPECT_TRUE(m_graph.Run());
    EXPECT_EQ(m_record.Take(),
              (Calls{ "GetState 10", "put_Visible 0", "put_Owner 0", "put_Left 0", "put_Top 0", "put_Width 0",
                      "put_Height 0", "put_WindowStyle 1174405120", "put_MessageDrain 0", "put_Visible 0", "Run" }));
    m_record.state = State_Running;
    EXPECT_TRUE(m_graph.Run());
    EXPECT_EQ(m_record.Take(), Calls{ "GetState 10" });
}

TEST_F(DirectShowTest, PauseWaitsForTheFirstSoundOnlyWhileItIsUnderWay)
{
    EXPECT_TRUE(m_graph.Pause());
    EXPECT_EQ(m_record.Take(), (Calls{ "GetState 10", "Pause" }));
    m_record.result = S_FALSE;
    EXPECT_TRUE(m_graph.Pause());
    EXPECT_EQ(m_record.Take(), (Calls{ "GetState 10", "Pause", "GetState 1500" }));
    m_record.state = State_Paused;
    EXPECT_TRUE(m_graph.Pause());
    EXPECT_EQ(m_record.Take(), Calls{ "GetState 10" });
}

TEST_F(DirectShowTest, StopHidesThePictureAndStopsUnlessItIsStopped)
{
    m_record.state = State_Running;
    EXPECT_TRUE(m_graph.Stop());
    EXPECT_EQ(m_record.Take(), (Calls{ "put_Visible 0", "GetState 10", "Stop" }));
    m_record.state = State_Stopped;
    EXPECT_TRUE(m_graph.Stop());
    EXPECT_EQ(m_record.Take(), (Calls{ "put_Visible 0", "GetState 10" }));
}

TEST_F(DirectShowTest, StateThatCannotBeToldIsNone)
{
    m_record.result = E_FAIL;
    EXPECT_FALSE(m_graph.IsRunning() || m_graph.IsPaused() || m_graph.IsStopped());
    EXPECT_FALSE(m_graph.Run() || m_graph.Pause() || m_graph.Stop());
}

// ---- events ----

TEST_F(DirectShowTest, NoticesAreMessage1044)
{
    EXPECT_TRUE(m_graph.SetNotifyWindow(nullptr));
    EXPECT_EQ(m_record.Take(), Calls{ "SetNotifyWindow 0 1044 0" });
}

TEST_F(DirectShowTest, EventsAreTakenWithoutWaitingAndFreed)
{
    m_record.events = { 13, kGraphComplete };
    long code = 0;
    EXPECT_TRUE(m_graph.TakeEvent(code));
    EXPECT_EQ(code, 13);
    EXPECT_EQ(m_record.Take(), (Calls{ "GetEvent 0", "FreeEventParams 13 11 22" }));
    m_graph.DrainEvents();
    EXPECT_EQ(m_record.Take(), (Calls{ "GetEvent 0", "FreeEventParams 1 11 22", "GetEvent 0" }));
}

Calls TakeAllEvents(MediaGraph& graph)
{
    Calls codes;
    for (long code = 0; graph.TakeEvent(code);)
        codes.push_back(std::to_string(code));
    return codes;
}

TEST_F(DirectShowTest, AbortIsFollowedByOneEnd)
{
    m_record.events = { kGraphErrorAbort };
    EXPECT_EQ(TakeAllEvents(m_graph), (Calls{ "3", "1" }));
    m_record.events = { kGraphErrorAbort, kGraphComplete };
    EXPECT_EQ(TakeAllEvents(m_graph), Calls{ "3" }) << "the end has been told";
}

TEST_F(DirectShowTest, EndAfterASeekIsToldAgain)
{
    m_record.events = { kGraphErrorAbort };
    EXPECT_EQ(TakeAllEvents(m_graph), (Calls{ "3", "1" }));
    m_graph.SetPosition(0.0);
    m_record.events = { kGraphComplete };
    EXPECT_EQ(TakeAllEvents(m_graph), Calls{ "1" });
}

// ---- places, speeds, loudness ----

TEST_F(DirectShowTest, PlacesAreCutToWholeReferenceTimeUnits)
{
    EXPECT_TRUE(m_graph.SetPosition(1.23456789));
    EXPECT_TRUE(m_graph.SetPositions(0.25, 2.5));
    EXPECT_TRUE(m_graph.SetPosition(-5.0));
    EXPECT_EQ(m_record.Take(), (Calls{ "SetPositions 12345678 5 null 0", "SetPositions 2500000 5 25000000 5",
                                       "SetPositions 0 5 null 0" }));
}

TEST_F(DirectShowTest, PlacesAreAnsweredInSecondsAndUntouchedOnFailure)
{
    m_record.position = 12345678;
    double duration = 0.0, current = 0.0, stop = 0.0;
    EXPECT_TRUE(m_graph.GetDuration(duration) && m_graph.GetCurrentPosition(current) && m_graph.GetStopPosition(stop));
    EXPECT_DOUBLE_EQ(duration, 1.2345678);
    EXPECT_DOUBLE_EQ(current, 1.2345678);
    EXPECT_DOUBLE_EQ(stop, 1.2345678);
    EXPECT_EQ(m_record.Take(), (Calls{ "GetDuration", "GetCurrentPosition", "GetStopPosition" }));
    m_record.result = E_NOTIMPL;
    m_record.position = 0;
    EXPECT_FALSE(m_graph.GetDuration(duration) || m_graph.GetCurrentPosition(current) || m_graph.GetStopPosition(stop));
    EXPECT_DOUBLE_EQ(duration, 1.2345678);
    EXPECT_DOUBLE_EQ(current, 1.2345678);
    EXPECT_DOUBLE_EQ(stop, 1.2345678);
}

TEST_F(DirectShowTest, SpeedAndLoudnessArePassedOn)
{
    double rate = 0.0;
    EXPECT_TRUE(m_graph.SetRate(2.0) && m_graph.GetRate(rate));
    EXPECT_EQ(rate, 1.5);
    EXPECT_TRUE(m_graph.SetVolume(-784) && m_graph.SetBalance(300));
    EXPECT_EQ(m_graph.GetVolume(), -784);
    EXPECT_EQ(m_graph.GetBalance(), -300);
    EXPECT_EQ(m_record.Take(), (Calls{ "SetRate 2.000000", "GetRate", "put_Volume -784", "put_Balance 300",
                                       "get_Volume", "get_Balance" }));
    m_record.result = E_FAIL;
    EXPECT_FALSE(m_graph.SetVolume(0) || m_graph.SetBalance(0) || m_graph.SetRate(1.0));
    EXPECT_EQ(m_graph.GetVolume(), 0);
    EXPECT_EQ(m_graph.GetBalance(), 0);
}

// ---- picture and pins ----

TEST_F(DirectShowTest, PictureFillsItsOwner)
{
    const HWND owner =
        CreateWindowExW(0, TEXT("STATIC"), nullptr, WS_POPUP, 3, 4, 50, 40, nullptr, nullptr, nullptr, nullptr);
    const std::string handle = std::to_string(reinterpret_cast<OAHWND>(owner));
    EXPECT_TRUE(m_graph.SetVideoOwner(owner));
    EXPECT_EQ(m_record.Take(),
              (Calls{ "put_Visible 0", "put_Owner " + handle, "put_Left 0", "put_Top 0", "put_Width 50",
                      "put_Height 40", "put_WindowStyle 1174405120", "put_MessageDrain " + handle, "put_Visible -1" }));
    DestroyWindow(owner);
}

TEST_F(DirectShowTest, PictureIsHiddenWhileItMoves)
{
    EXPECT_TRUE(m_graph.SetVideoRect(1, 2, 30, 40));
    EXPECT_EQ(m_record.Take(), (Calls{ "get_Visible", "put_Visible 0", "put_Left 1", "put_Top 2", "put_Width 30",
                                       "put_Height 40", "put_Visible -1" }));
    m_record.visible = OAFALSE;
    EXPECT_TRUE(m_graph.SetVideoRect(1, 2, 30, 40));
    EXPECT_EQ(m_record.Take().back(), "put_Visible 0");
}

TEST_F(DirectShowTest, FullScreenIsPassedOn)
{
    EXPECT_TRUE(m_graph.SetFullScreen(true) && m_graph.SetFullScreen(false));
    EXPECT_TRUE(m_graph.IsFullScreen());
    m_record.visible = OAFALSE;
    EXPECT_FALSE(m_graph.IsFullScreen());
    EXPECT_EQ(m_record.Take(),
              (Calls{ "put_FullScreenMode -1", "put_FullScreenMode 0", "get_FullScreenMode", "get_FullScreenMode" }));
}

TEST_F(DirectShowTest, PinsAreConnectedByTheGraph)
{
    EXPECT_TRUE(m_graph.ConnectDirect(nullptr, nullptr, nullptr) && m_graph.Disconnect(nullptr));
    EXPECT_EQ(m_record.Take(), (Calls{ "ConnectDirect", "Disconnect" }));
}

// ---- the system's own graph ----

class SystemGraphTest : public SoundTest {
protected:
    // Whether the graph holds a filter of this name.
    bool Holds(const wchar_t* name)
    {
        IGraphBuilder* graph = nullptr;
        m_graph.GetEventInterface()->QueryInterface(IID_IGraphBuilder, reinterpret_cast<void**>(&graph));
        IBaseFilter* filter = nullptr;
        const bool holds = SUCCEEDED(graph->FindFilterByName(name, &filter));
        if (filter != nullptr)
            filter->Release();
        graph->Release();
        return holds;
    }
};

TEST_F(SystemGraphTest, RendererOfTheWishedNameTakesTheSound)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_FALSE(Holds(L"Default WaveOut Device"));
    cardsong::kernel::SetAudioSink("Default WaveOut Device");
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_TRUE(Holds(L"Default WaveOut Device"));
    EXPECT_FALSE(Holds(L"Default DirectSound Device"));
    m_graph.Run();
    EXPECT_TRUE(Await([&] { return Position() > 0.1; }));
}

} // namespace
