#include <platform/linux/x11/connection/X11Connection.h>
#include <platform/linux/x11/connection/XkbProtocol.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// Counts how often the bell of a display rings, from now on.
class BellCount final {
public:
    explicit BellCount(const QString& display) : m_connection(X11Connection::open(display.toLocal8Bit()))
    {
        xcb_connection_t* const xcb = m_connection->connection();
        constexpr quint16 bell = XCB_XKB_EVENT_TYPE_BELL_NOTIFY;
        xcb_xkb_select_events(xcb, XCB_XKB_ID_USE_CORE_KBD, bell, 0, bell, 0, 0, nullptr);
        m_listening = m_connection->listen([this](const xcb_generic_event_t& event) {
            const auto& notify = reinterpret_cast<const xcb_xkb_bell_notify_event_t&>(event);
            m_count += notify.xkbType == XCB_XKB_BELL_NOTIFY ? 1 : 0;
        });
        m_connection->catchUp();
    }
    [[nodiscard]] int count() const { return m_count; }

private:
    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Connection::Token> m_listening;
    int m_count = 0;
};

TEST(X11BellTest, RingsOnceForEachCall)
{
    const VirtualDesktop desktop;
    const BellCount bells(desktop.display());
    const auto connection = X11Connection::open(desktop.display().toLocal8Bit());
    connection->ringBell();
    EXPECT_TRUE(waitUntil([&bells] { return bells.count() == 1; }));
    connection->ringBell();
    EXPECT_TRUE(waitUntil([&bells] { return bells.count() == 2; }));
}

TEST(X11BellTest, IsSilentWhereTheServerHasGone)
{
    VirtualDesktop desktop;
    const auto connection = X11Connection::open(desktop.display().toLocal8Bit());
    desktop.killServer();
    ASSERT_TRUE(waitUntil([&connection] { return connection->isBroken(); }));
    connection->ringBell();
    EXPECT_TRUE(connection->isBroken());
}

} // namespace

} // namespace tulvane::test
