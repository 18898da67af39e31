#pragma once

#include <ports/KeyModifiers.h>
#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/viewmodels/HotkeyViewModel.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/OnboardingWindowController.h>

#include <QQuickView>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace tulvane::test {

inline constexpr KeyCombination altSpace{49, carbon::option};
inline constexpr KeyCombination controlAltSpace{49, carbon::control | carbon::option};
inline constexpr KeyCombination controlD{2, carbon::control};

// Keys as the window system tells of them: no scan code, the key, what is held.
inline constexpr NativeKey letterD{0, 2, 0};
inline constexpr NativeKey letterX{0, 7, 0};
inline constexpr NativeKey controlPlusD{0, 2, static_cast<quint32>(eventFlags::control)};
inline constexpr NativeKey altPlusSpace{0, 49, static_cast<quint32>(eventFlags::option)};
inline constexpr NativeKey commandPlusQ{0, 12, static_cast<quint32>(eventFlags::command)};
inline constexpr NativeKey shift{0, 56, 0};
inline constexpr NativeKey fn{0, 63, 0};
inline constexpr NativeKey escape{0, 53, 0};
inline constexpr NativeKey backspace{0, 51, 0};
inline constexpr NativeKey tab{0, 48, 0};

/// The view as the setup guide shows it, with ⌥Space set.
class HotkeyViewFixture : public testing::Test {
protected:
    /// `prepared` is called before the window is made.
    explicit HotkeyViewFixture(const std::function<void(UiWorld&)>& prepared = {})
    {
        if (prepared)
            prepared(world);
        world.ui.showOnboarding();
        m_probe.emplace(*world.ui.onboardingWindow().window());
        // Its step is done, and so a line.
        m_probe->click(QStringLiteral("step.4"));
    }

    WindowProbe& probe() { return *m_probe; }
    [[nodiscard]] ShortcutFieldViewModel& field() { return *world.ui.models().hotkey()->field(); }
    void record() { probe().click(combination); }
    [[nodiscard]] std::optional<Shortcut> stored() const
    {
        return world.shortcuts.getShortcut(ShortcutName::dictate());
    }
    [[nodiscard]] bool isRegistered(const KeyCombination& keys)
    {
        return world.globalHotkeys.isRegistered(keys);
    }
    /// What was pressed is up for good.
    void letGo() { world.scheduler.advance(std::chrono::milliseconds(50)); }

    UiWorld world;
    const QString combination = QStringLiteral("hotkey.combination");

private:
    std::optional<WindowProbe> m_probe;
};

} // namespace tulvane::test
