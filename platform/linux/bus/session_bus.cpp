#include "platform/linux/bus/session_bus.h"

#include "platform/linux/bus/message_coding.h"

#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <mutex>
#include <thread>

namespace cardsong::bus {
namespace {

constexpr std::size_t kMostWaiting = 64;
constexpr std::chrono::milliseconds kEndLimit{ 60 };

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};
template <typename T>
using Ref = std::unique_ptr<T, Unref>;
using OwnedText = std::unique_ptr<char, void (*)(void*)>;

} // namespace

// Shared by the object and its thread, so that a thread that is left behind touches nothing that is gone.
class SessionBus::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(std::string address, std::string device, Callbacks callbacks)
        : m_address(std::move(address)), m_device(std::move(device)), m_callbacks(std::move(callbacks))
    {
    }
    void Start();
    void End();
    void Send(user::CrossingMessage message);
    bool Flush(std::chrono::milliseconds limit);

private:
    enum class State { Opening, Open, Lost };

    void Run();
    void Serve();
    [[nodiscard]] bool Connect();
    [[nodiscard]] bool Subscribe();
    void Disconnect();
    void Take(GDBusMessage& signal);
    [[nodiscard]] bool IsServing();
    void SendWaiting();
    void EnterLost();
    static GDBusMessage* OnMessage(GDBusConnection* connection, GDBusMessage* message, gboolean isIncoming,
                                   gpointer keeper);
    static void OnClosed(GDBusConnection* connection, gboolean isRemote, GError* error, gpointer self);
    static void OnFlushed(GObject* connection, GAsyncResult* result, gpointer sent);

    const std::string m_address;
    const std::string m_device;
    const Callbacks m_callbacks;
    const Ref<GMainContext> m_context{ g_main_context_new() };
    const Ref<GCancellable> m_cancellable{ g_cancellable_new() };
    std::thread m_thread;

    std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    State m_state = State::Opening;
    bool m_ends = false;
    bool m_hasEnded = false;
    bool m_hasDropped = false;
    std::deque<user::CrossingMessage> m_waiting;
    std::size_t m_underway = 0; // handed to the connection, not yet with the bus

    // The thread's own.
    Ref<GDBusConnection> m_bus;
    guint m_filter = 0;
};

void SessionBus::Connection::Start()
{
    m_thread = std::thread([self = shared_from_this()] { self->Run(); });
}

void SessionBus::Connection::End()
{
    std::unique_lock lock(m_mutex);
    m_ends = true;
    g_cancellable_cancel(m_cancellable.get());
    g_main_context_wakeup(m_context.get());
    const bool hasEnded = m_changed.wait_for(lock, kEndLimit, [this] { return m_hasEnded; });
    lock.unlock();
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
}

void SessionBus::Connection::Send(user::CrossingMessage message)
{
    const std::lock_guard lock(m_mutex);
    if (m_state == State::Lost || m_waiting.size() + m_underway >= kMostWaiting) {
        m_hasDropped = true;
        return;
    }
    m_waiting.push_back(std::move(message));
    g_main_context_wakeup(m_context.get());
}

bool SessionBus::Connection::Flush(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    const auto isSent = [this] { return m_state == State::Open && m_waiting.empty() && m_underway == 0; };
    m_changed.wait_for(lock, limit, [&] { return m_state == State::Lost || isSent(); });
    return isSent() && !m_hasDropped;
}

void SessionBus::Connection::Run()
{
    g_main_context_push_thread_default(m_context.get());
    if (Connect())
        Serve();
    else
        EnterLost();
    Disconnect();
    g_main_context_pop_thread_default(m_context.get());
    const std::lock_guard lock(m_mutex);
    m_hasEnded = true;
    m_changed.notify_all();
}

bool SessionBus::Connection::Connect()
{
    if (m_address.empty())
        return false;
    constexpr auto kFlags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    m_bus.reset(
        g_dbus_connection_new_for_address_sync(m_address.c_str(), kFlags, nullptr, m_cancellable.get(), nullptr));
    if (m_bus == nullptr)
        return false;
    g_dbus_connection_set_exit_on_close(m_bus.get(), FALSE); // a bus that goes does not take the program with it
    return true;
}

// Signals are looked at where the library reads them: a flood of them never waits in memory. The bus answers in order:
// with its answer it has the rule.
bool SessionBus::Connection::Subscribe()
{
    g_signal_connect(m_bus.get(), "closed", G_CALLBACK(OnClosed), this);
    m_filter =
        g_dbus_connection_add_filter(m_bus.get(), OnMessage, new std::shared_ptr<Connection>(shared_from_this()),
                                     [](gpointer keeper) { delete static_cast<std::shared_ptr<Connection>*>(keeper); });
    const OwnedText rule(
        g_strdup_printf("type='signal',interface='%s',path='%s',arg0='%s'", kInterface, kObjectPath, m_device.c_str()),
        g_free);
    GVariant* const answer = g_dbus_connection_call_sync(
        m_bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "AddMatch",
        g_variant_new("(s)", rule.get()), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, m_cancellable.get(), nullptr);
    if (answer != nullptr)
        g_variant_unref(answer);
    return answer != nullptr;
}

void SessionBus::Connection::Disconnect()
{
    if (m_bus == nullptr)
        return;
    if (m_filter != 0)
        g_dbus_connection_remove_filter(m_bus.get(), m_filter);
    g_signal_handlers_disconnect_by_data(m_bus.get(), this);
    m_bus.reset();
}

void SessionBus::Connection::Serve()
{
    if (!Subscribe()) {
        EnterLost();
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_state = State::Open;
        m_changed.notify_all();
    }
    while (IsServing()) {
        SendWaiting();
        g_main_context_iteration(m_context.get(), TRUE);
    }
}

bool SessionBus::Connection::IsServing()
{
    const std::lock_guard lock(m_mutex);
    return !m_ends && m_state == State::Open;
}

// One batch at a time: while the bus hangs, what is sent waits here, where it is counted.
void SessionBus::Connection::SendWaiting()
{
    std::deque<user::CrossingMessage> batch;
    {
        const std::lock_guard lock(m_mutex);
        if (m_underway > 0 || m_waiting.empty())
            return;
        batch.swap(m_waiting);
        m_underway = batch.size();
    }
    for (const user::CrossingMessage& message : batch)
        g_dbus_connection_emit_signal(m_bus.get(), nullptr, kObjectPath, kInterface, SignalFor(message),
                                      ArgumentsFor(message, m_device), nullptr);
    g_dbus_connection_flush(m_bus.get(), m_cancellable.get(), OnFlushed, this);
}

void SessionBus::Connection::EnterLost()
{
    bool isEnding = false;
    {
        const std::lock_guard lock(m_mutex);
        if (m_state == State::Lost)
            return;
        m_state = State::Lost;
        m_hasDropped = m_hasDropped || !m_waiting.empty() || m_underway > 0;
        m_waiting.clear();
        m_changed.notify_all();
        isEnding = m_ends;
    }
    if (!isEnding)
        m_callbacks.lost();
}

// On the library's own thread.
void SessionBus::Connection::Take(GDBusMessage& signal)
{
    GVariant* const arguments = g_dbus_message_get_body(&signal);
    if (arguments == nullptr || g_strcmp0(g_dbus_message_get_path(&signal), kObjectPath) != 0)
        return;
    if (const auto message = MessageFrom(g_dbus_message_get_member(&signal), arguments, m_device))
        m_callbacks.received(*message);
}

// Keeps our signals to itself and lets all else pass. The bus tells a sender of its own signals, too.
GDBusMessage* SessionBus::Connection::OnMessage(GDBusConnection* connection, GDBusMessage* message, gboolean isIncoming,
                                                gpointer keeper)
{
    if (!isIncoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_SIGNAL ||
        g_strcmp0(g_dbus_message_get_interface(message), kInterface) != 0)
        return message;
    if (g_strcmp0(g_dbus_message_get_sender(message), g_dbus_connection_get_unique_name(connection)) != 0)
        (*static_cast<std::shared_ptr<Connection>*>(keeper))->Take(*message);
    g_object_unref(message);
    return nullptr;
}

void SessionBus::Connection::OnClosed(GDBusConnection*, gboolean, GError*, gpointer self)
{
    static_cast<Connection*>(self)->EnterLost();
}

void SessionBus::Connection::OnFlushed(GObject* connection, GAsyncResult* result, gpointer self)
{
    auto& own = *static_cast<Connection*>(self);
    const gboolean isWithBus = g_dbus_connection_flush_finish(G_DBUS_CONNECTION(connection), result, nullptr);
    const std::lock_guard lock(own.m_mutex);
    own.m_underway = 0;
    own.m_hasDropped = own.m_hasDropped || isWithBus == FALSE;
    own.m_changed.notify_all();
}

std::string SessionBusAddress()
{
    const char* const named = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (named != nullptr && *named != '\0')
        return std::string_view(named).starts_with("autolaunch:") ? std::string() : named;
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string socket = (runtime != nullptr ? std::string(runtime) : std::string()) + "/bus";
    std::error_code error;
    if (runtime == nullptr || !std::filesystem::is_socket(socket, error))
        return {};
    const OwnedText escaped(g_dbus_address_escape_value(socket.c_str()), g_free);
    return "unix:path=" + std::string(escaped.get());
}

SessionBus::SessionBus(const std::string& address, const std::string& device, Callbacks callbacks)
    : m_connection(std::make_shared<Connection>(address, device, std::move(callbacks)))
{
    m_connection->Start();
}

SessionBus::~SessionBus()
{
    m_connection->End();
}

void SessionBus::Send(user::CrossingMessage message)
{
    m_connection->Send(std::move(message));
}

bool SessionBus::Flush(std::chrono::milliseconds limit)
{
    return m_connection->Flush(limit);
}

} // namespace cardsong::bus
