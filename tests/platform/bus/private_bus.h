// A message bus that no other test shares.
#pragma once

#include <gio/gio.h>

#include <string>
#include <utility>

namespace cardsong::test {

class PrivateBus {
public:
    PrivateBus() : m_bus(g_test_dbus_new(G_TEST_DBUS_NONE)) { g_test_dbus_up(m_bus); }
    ~PrivateBus()
    {
        Kill();
        g_object_unref(m_bus);
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    std::string Address() const { return g_test_dbus_get_bus_address(m_bus); }
    void Kill()
    {
        if (std::exchange(m_isUp, false))
            g_test_dbus_down(m_bus);
    }

private:
    GTestDBus* const m_bus;
    bool m_isUp = true;
};

} // namespace cardsong::test
