#include "ModifierEventsBackend.h"

#include <platform/linux/x11/keyboard/X11ModifierEvents.h>
#include <ports/VirtualKeys.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

namespace tulvane::test {

namespace {

class X11Backend final : public ModifierEventsBackend {
public:
    ModifierEvents& events() override { return m_events; }
    void press(quint32 keyCode) override { m_keys.press(deviceKey(keyCode)); }
    void release(quint32 keyCode) override { m_keys.release(deviceKey(keyCode)); }

private:
    static DeviceKey deviceKey(quint32 keyCode)
    {
        return static_cast<DeviceKey>(virtualKeys::byCode(keyCode)->evdev);
    }

    VirtualDesktop m_desktop;
    XTestKeys m_keys{m_desktop.display()};
    X11ModifierEvents m_events{m_desktop.display()};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(X11, ModifierEventsContract,
                         testing::Values(ModifierBackendFactory{
                             "X11", [] { return std::make_unique<X11Backend>(); }}));

} // namespace tulvane::test
