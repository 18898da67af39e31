#pragma once

#include <platform/linux/wayland/connection/WaylandConnection.h>
#include <platform/linux/wayland/keyboard/KeyDevice.h>

#include <kde-fake-input-client.h>

#include <memory>

namespace tulvane {

/// Posted keys on KDE, in the layout that the user has. The compositor lets a program have it whose desktop
/// entry names the interface. All keyboards share their modifiers there: what the user holds down is let go
/// of first. Main thread.
class FakeInput final : public KeyDevice {
public:
    /// Null where the compositor does not offer it to us.
    [[nodiscard]] static std::unique_ptr<FakeInput> make(std::shared_ptr<WaylandConnection> connection);
    FakeInput(const FakeInput&) = delete;
    FakeInput& operator=(const FakeInput&) = delete;
    ~FakeInput() override;

    [[nodiscard]] bool isThere() const override { return !m_connection->isBroken(); }
    void letGo() override;
    void press(quint32 evdev) override;
    void release(quint32 evdev) override;
    [[nodiscard]] bool finish() override;

private:
    FakeInput(std::shared_ptr<WaylandConnection> connection, org_kde_kwin_fake_input* object);

    std::shared_ptr<WaylandConnection> m_connection;
    org_kde_kwin_fake_input* m_object;
};

} // namespace tulvane
