// Programs on a bus that no other test shares; two of them in this process stand for two processes.
#include "platform/linux/bus/session_bus.h"

#include "platform/linux/bus/message_coding.h"
#include "tests/platform/bus/private_bus.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace cardsong::bus {
namespace {

using user::CrossingMessage;
using namespace std::chrono_literals;
using cardsong::test::PrivateBus;

constexpr auto kPatience = 10s; // a loaded machine; a test that passes does not wait so long

// A program on the bus, and what it has heard.
class Program {
public:
    explicit Program(const std::string& address, const std::string& device = "1-1")
        : m_bus(address, device,
                { [heard = m_heard](const CrossingMessage& message) { heard->Add(message); },
                  [heard = m_heard] { heard->AddLoss(); } })
    {
    }
    SessionBus& Bus() { return m_bus; }
    bool IsOpen() { return m_bus.Flush(kPatience); }
    void Send(const std::u16string& name) { m_bus.Send({ u"", name, 0, 0 }); }
    std::vector<std::u16string> AwaitNames(std::size_t count)
    {
        std::unique_lock lock(m_heard->mutex);
        m_heard->changed.wait_for(lock, kPatience, [&] { return m_heard->names.size() >= count; });
        return m_heard->names;
    }
    int AwaitLosses()
    {
        std::unique_lock lock(m_heard->mutex);
        m_heard->changed.wait_for(lock, kPatience, [&] { return m_heard->losses > 0; });
        return m_heard->losses;
    }

private:
    struct Heard {
        void Add(const CrossingMessage& message)
        {
            const std::lock_guard lock(mutex);
            names.push_back(message.name);
            changed.notify_all();
        }
        void AddLoss()
        {
            const std::lock_guard lock(mutex);
            ++losses;
            changed.notify_all();
        }

        std::mutex mutex;
        std::condition_variable changed;
        std::vector<std::u16string> names;
        int losses = 0;
    };
    const std::shared_ptr<Heard> m_heard = std::make_shared<Heard>();
    SessionBus m_bus;
};

using Names = std::vector<std::u16string>;

TEST(SessionBus, AMessageReachesTheOtherProgramsOnceAndNeverItsSender)
{
    const PrivateBus bus;
    Program first(bus.Address());
    Program second(bus.Address());
    ASSERT_TRUE(first.IsOpen() && second.IsOpen());
    first.Send(u"one");
    first.Send(u"two");
    EXPECT_EQ(second.AwaitNames(2), (Names{ u"one", u"two" }));
    second.Send(u"three");
    EXPECT_EQ(first.AwaitNames(1), Names{ u"three" }); // its own two would have come before
}

TEST(SessionBus, WhatIsSentBeforeTheBusAnswersIsSentThen)
{
    const PrivateBus bus;
    Program second(bus.Address());
    ASSERT_TRUE(second.IsOpen());
    Program first(bus.Address());
    first.Send(u"early");
    EXPECT_EQ(second.AwaitNames(1), Names{ u"early" });
}

TEST(SessionBus, ProgramsOfAnotherDeviceHearNothing)
{
    const PrivateBus bus;
    Program here(bus.Address(), "1-1");
    Program there(bus.Address(), "1-11");
    ASSERT_TRUE(here.IsOpen() && there.IsOpen());
    Program also(bus.Address(), "1-11");
    here.Send(u"here");
    ASSERT_TRUE(here.Bus().Flush(kPatience));
    also.Send(u"there");
    EXPECT_EQ(there.AwaitNames(1), Names{ u"there" });
}

TEST(SessionBus, WhatIsNoMessageIsIgnored)
{
    const PrivateBus bus;
    Program program(bus.Address());
    ASSERT_TRUE(program.IsOpen());
    GDBusConnection* const stranger = g_dbus_connection_new_for_address_sync(
        bus.Address().c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    ASSERT_NE(stranger, nullptr);
    const auto emit = [stranger](const char* signal, GVariant* arguments) {
        g_dbus_connection_emit_signal(stranger, nullptr, kObjectPath, kInterface, signal, arguments, nullptr);
    };
    emit("Message", g_variant_new("(s)", "1-1"));
    emit("Message", g_variant_new("(ss)", "1-1", "x"));
    emit("Command", g_variant_new("(sss)", "1-1", "x", "y"));
    emit("Message", g_variant_new("(ssstx)", "1-1", "", std::string(100'000, 'n').c_str(), guint64{ 0 }, gint64{ 0 }));
    emit("Unknown", g_variant_new("(ssstx)", "1-1", "", "unknown", guint64{ 0 }, gint64{ 0 }));
    emit("Message", g_variant_new("(ssstx)", "1-1", "", "good", guint64{ 0 }, gint64{ 0 }));
    EXPECT_EQ(program.AwaitNames(1), Names{ u"good" });
    g_object_unref(stranger);
}

TEST(SessionBus, WithoutABusNothingIsSentAndNobodyWaits)
{
    for (const char* address : { "", "unix:path=/nowhere/at/all", "no address" }) {
        Program program(address);
        EXPECT_EQ(program.AwaitLosses(), 1) << address;
        program.Send(u"lost");
        EXPECT_FALSE(program.Bus().Flush(kPatience)) << address;
    }
}

TEST(SessionBus, ABusThatDiesIsToldOnceAndTakesNobodyWithIt)
{
    PrivateBus bus;
    Program program(bus.Address());
    ASSERT_TRUE(program.IsOpen());
    bus.Kill();
    EXPECT_EQ(program.AwaitLosses(), 1);
    program.Send(u"lost");
    EXPECT_FALSE(program.Bus().Flush(kPatience));
}

TEST(SessionBus, ABusThatNeverAnswersHoldsNobody)
{
    const test::ScratchDevice device;
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    const std::string path = device.UserDirectory() + "/socket";
    ASSERT_LT(path.size(), sizeof name.sun_path);
    path.copy(name.sun_path, sizeof name.sun_path - 1);
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
    ASSERT_EQ(listen(listener, 5), 0);

    const auto begin = std::chrono::steady_clock::now();
    {
        Program program("unix:path=" + path);
        for (int i = 0; i < 10'000; ++i)
            program.Send(u"waits");
        EXPECT_FALSE(program.Bus().Flush(20ms));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s); // connecting alone has no limit
    close(listener);
}

class BusAddress : public ::testing::Test {
protected:
    void SetUp() override
    {
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
        unsetenv("XDG_RUNTIME_DIR");
    }
    void TearDown() override
    {
        for (const auto& [name, value] :
             { std::pair{ "DBUS_SESSION_BUS_ADDRESS", m_address }, std::pair{ "XDG_RUNTIME_DIR", m_runtime } })
            value ? setenv(name, value->c_str(), 1) : unsetenv(name);
    }
    static std::optional<std::string> Variable(const char* name)
    {
        const char* const value = getenv(name);
        return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
    }

    const std::optional<std::string> m_address = Variable("DBUS_SESSION_BUS_ADDRESS");
    const std::optional<std::string> m_runtime = Variable("XDG_RUNTIME_DIR");
    test::ScratchDevice m_device;
};

TEST_F(BusAddress, TheEnvironmentNamesIt)
{
    EXPECT_EQ(SessionBusAddress(), "");
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/a", 1);
    EXPECT_EQ(SessionBusAddress(), "unix:path=/a");
}

TEST_F(BusAddress, ElseItIsTheSocketOfTheUsersSession)
{
    setenv("XDG_RUNTIME_DIR", m_device.UserDirectory().c_str(), 1);
    EXPECT_EQ(SessionBusAddress(), "");
    m_device.WriteFile("user/bus"); // no socket
    EXPECT_EQ(SessionBusAddress(), "");
    std::filesystem::remove(m_device.UserDirectory() + "/bus");
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    (m_device.UserDirectory() + "/bus").copy(name.sun_path, sizeof name.sun_path - 1);
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
    EXPECT_EQ(SessionBusAddress(), "unix:path=" + m_device.UserDirectory() + "/bus");
    close(listener);
}

TEST_F(BusAddress, NoBusIsStarted)
{
    setenv("DBUS_SESSION_BUS_ADDRESS", "autolaunch:", 1);
    EXPECT_EQ(SessionBusAddress(), "");
}

} // namespace
} // namespace cardsong::bus
