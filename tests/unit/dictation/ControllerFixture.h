#pragma once

#include "SessionFixture.h"

#include <dictation/DictationController.h>
#include <dictation/Indicator.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <insertion/TextInserter.h>
#include <permissions/PermissionsService.h>
#include <platform/fake/FakeFocusedElement.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <platform/fake/FakeKeyPosting.h>
#include <platform/fake/FakeModifierEvents.h>
#include <platform/fake/FakePasteboard.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/fake/FakeProcesses.h>
#include <platform/fake/FakeSounds.h>
#include <platform/fake/FakeWorkspace.h>

namespace tulvane::test {

/// Writes down what it is told: "show", "fade", "hide", and each phase.
class FakeIndicator final : public Indicator {
public:
    void setPhase(const Phase& shown) override { phase = shown; }
    void setLevel(float shown) override { level = shown; }
    void show() override { visibility = QStringLiteral("show"); }
    void hide(bool animated) override
    {
        visibility = animated ? QStringLiteral("fade") : QStringLiteral("hide");
    }

    Phase phase;
    float level = 0;
    QString visibility;
};

class FakeWindows final : public Windows {
public:
    void showOnboarding() override { ++onboardings; }
    void showPage(SettingsTab page) override { pages.append(page); }
    int onboardings = 0;
    QList<SettingsTab> pages;
};

/// The controller over a session, an inserter and hotkeys whose neighbours are fakes, with time held still.
class ControllerFixture : public SessionFixture {
protected:
    void SetUp() override
    {
        SessionFixture::SetUp();
        settings.setHotkeyMode(HotkeyMode::toggle);
        makeController();
    }

    void makeController()
    {
        controller.reset();
        phases.clear();
        controller = std::make_unique<DictationController>(
            DictationController::Dependencies{.settings = settings,
                                              .session = *session,
                                              .recorder = recorder,
                                              .models = models,
                                              .permissions = permissions,
                                              .inserter = inserter,
                                              .hotkeys = hotkeys,
                                              .indicator = indicator,
                                              .windows = windows,
                                              .sounds = sounds,
                                              .scheduler = scheduler,
                                              .version = QStringLiteral("1.2.3"),
                                              .refreshModels = [this] { ++modelRefreshes; },
                                              .hasCombination = [this] { return hasCombination; },
                                              .applyActivationPolicy = [this] { ++policyChanges; }});
        QObject::connect(controller.get(), &DictationController::phaseChanged,
                         [this](const Phase& phase) { phases.append(nameOf(phase)); });
    }

    static QString nameOf(const Phase& phase)
    {
        const QString name = tulvane::nameOf(phase.kind);
        return phase.text.isEmpty() ? name : name + QStringLiteral(": ") + phase.text;
    }

    [[nodiscard]] QString phase() const { return nameOf(controller->phase()); }

    /// One press and release of the combination.
    void press()
    {
        globalHotkeys.press(combination);
        globalHotkeys.release(combination);
        settle();
    }
    void speak(std::size_t samples = 16000, float level = 0.5F)
    {
        ASSERT_TRUE(input.push(std::vector<float>(samples, level)));
    }
    /// A whole dictation by the hotkey, to where the inserter waits for the program in front.
    void dictateByHotkey()
    {
        press();
        speak();
        press();
    }
    void advance(std::chrono::milliseconds by)
    {
        scheduler.advance(by);
        settle();
    }

    static constexpr KeyCombination combination{49, 0x800};

    FakeGlobalHotkeys globalHotkeys;
    KeyboardShortcuts shortcuts{defaults, globalHotkeys};
    FakeModifierEvents modifiers;
    HotkeyController hotkeys{settings, shortcuts, modifiers, clock};
    FakePrivacyPermissions privacy;
    FakeProcesses processes;
    FakeWorkspace workspace;
    PermissionsService permissions{{privacy, processes, workspace, scheduler}, std::nullopt};
    FakePasteboards boards;
    FakeKeyPosting keys;
    FakeFocusedElements elements;
    TextInserter inserter{{boards, keys, elements, privacy, scheduler}};
    FakeIndicator indicator;
    FakeWindows windows;
    FakeSounds sounds;
    bool hasCombination = true;
    int modelRefreshes = 0;
    int policyChanges = 0;
    QStringList phases;
    std::unique_ptr<DictationController> controller;
};

} // namespace tulvane::test
