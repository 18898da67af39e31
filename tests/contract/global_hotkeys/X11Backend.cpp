#include "HotkeysBackend.h"

#include <platform/linux/x11/keyboard/X11Hotkeys.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <array>

namespace tulvane::test {

namespace {

struct Modifier {
    quint32 carbon;
    DeviceKey key;
    std::uint16_t mask;
};
constexpr std::array modifiers{
    Modifier{carbon::shift, DeviceKey::leftShift, 1}, Modifier{carbon::control, DeviceKey::leftControl, 4},
    Modifier{carbon::option, DeviceKey::leftAlt, 8}, Modifier{carbon::command, DeviceKey::leftSuper, 64}};

DeviceKey deviceKey(const KeyCombination& combination)
{
    return static_cast<DeviceKey>(virtualKeys::byCode(combination.keyCode)->evdev);
}

std::uint16_t maskOf(const KeyCombination& combination)
{
    std::uint16_t mask = 0;
    for (const Modifier& modifier : modifiers) {
        if ((combination.modifiers & modifier.carbon) != 0)
            mask = static_cast<std::uint16_t>(mask | modifier.mask);
    }
    return mask;
}

class X11Backend final : public HotkeysBackend {
public:
    GlobalHotkeys& hotkeys() override { return *m_hotkeys; }
    void press(const KeyCombination& combination) override
    {
        eachModifier(combination, [this](DeviceKey key) { m_keys.press(key); });
        m_keys.press(deviceKey(combination));
    }
    void release(const KeyCombination& combination) override
    {
        m_keys.release(deviceKey(combination));
        eachModifier(combination, [this](DeviceKey key) { m_keys.release(key); });
    }
    void releaseModifiersFirst(const KeyCombination& combination) override
    {
        eachModifier(combination, [this](DeviceKey key) { m_keys.release(key); });
        m_keys.release(deviceKey(combination));
    }
    void awaitRepeats(const KeyCombination&, const std::function<int()>& seen, int count) override
    {
        ASSERT_TRUE(waitUntil([&] { return seen() >= count; })) << seen() << " repeats";
    }
    void takeElsewhere(const KeyCombination& combination) override
    {
        ASSERT_TRUE(m_elsewhere.grab(deviceKey(combination), maskOf(combination)));
    }
    void freeElsewhere(const KeyCombination& combination) override
    {
        m_elsewhere.ungrab(deviceKey(combination), maskOf(combination));
    }
    void changeKeyboard() override { m_desktop.setKeyboardLayout(QStringLiteral("no")); }
    void end() override { m_hotkeys.reset(); }

    X11Backend() { m_keys.setRepeat(20, 2); }

private:
    static void eachModifier(const KeyCombination& combination, const std::function<void(DeviceKey)>& work)
    {
        for (const Modifier& modifier : modifiers) {
            if ((combination.modifiers & modifier.carbon) != 0)
                work(modifier.key);
        }
    }

    VirtualDesktop m_desktop;
    XTestKeys m_keys{m_desktop.display()};
    XTestKeys m_elsewhere{m_desktop.display()};
    std::unique_ptr<X11Hotkeys> m_hotkeys = std::make_unique<X11Hotkeys>(m_desktop.display());
};

} // namespace

INSTANTIATE_TEST_SUITE_P(X11, GlobalHotkeysContract,
                         testing::Values(BackendFactory{"X11",
                                                        [] { return std::make_unique<X11Backend>(); }}));

} // namespace tulvane::test
