#pragma once

#include <audio/AudioRecorder.h>
#include <dictation/Demonstration.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <dictation/ManagedModelSource.h>
#include <dictation/MicrophoneTest.h>
#include <dictation/ModelFigures.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <insertion/TextInserter.h>
#include <models/ModelManager.h>
#include <permissions/PermissionsService.h>
#include <platform/fake/FakeAudioInput.h>
#include <platform/fake/FakeBackgroundTransfers.h>
#include <platform/fake/FakeFocusedElement.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <platform/fake/FakeIndicatorPanel.h>
#include <platform/fake/FakeKeyPosting.h>
#include <platform/fake/FakeKeyboardGrab.h>
#include <platform/fake/FakeLoginItem.h>
#include <platform/fake/FakeModifierEvents.h>
#include <platform/fake/FakePasteboard.h>
#include <platform/fake/FakePresentation.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/fake/FakeProcesses.h>
#include <platform/fake/FakeSounds.h>
#include <platform/fake/FakeStatusItem.h>
#include <platform/fake/FakeSystemMemory.h>
#include <platform/fake/FakeUserDefaults.h>
#include <platform/fake/FakeWorkspace.h>
#include <settings/AppSettings.h>
#include <speech/device/ComputingStatus.h>
#include <stats/StatsStore.h>
#include <support/FakeClock.h>
#include <support/FakeRecognizer.h>
#include <support/FakeScheduler.h>
#include <support/ScratchFolder.h>
#include <ui/UiContext.h>
#include <ui/UserInterface.h>

#include <QImage>
#include <QMap>

class QQuickItem;

namespace tulvane::test {

/// What the item draws, with its alpha, in the screen's pixels.
[[nodiscard]] QImage pictureOf(QQuickItem& item);

/// Passes on to a real indicator where the test has given one.
class ExchangeableIndicator final : public Indicator {
public:
    void setPhase(const Phase& phase) override
    {
        if (target)
            target->setPhase(phase);
    }
    void setLevel(float level) override
    {
        if (target)
            target->setLevel(level);
    }
    void show() override
    {
        if (target)
            target->show();
    }
    void hide(bool animated) override
    {
        if (target)
            target->hide(animated);
    }
    Indicator* target = nullptr;
};

/// The whole program above its ports, with its real windows over fakes of everything else, at noon of a
/// Friday in November 2026. Needs a QGuiApplication ("offscreen" will do).
class UiWorld final {
public:
    explicit UiWorld(AppLanguage language = AppLanguage::english);
    ~UiWorld();
    UiWorld(const UiWorld&) = delete;
    UiWorld& operator=(const UiWorld&) = delete;

    /// Lets what was posted happen, some of which posts more.
    static void settle();
    /// Puts a file of the right size and kind at the model's place.
    void installModel(const QString& id);
    /// A dictation with this result, inserted, of so many seconds of speech.
    void dictate(const QString& text, double seconds = 3);
    /// Counts of the last 40 days, as an everyday user has them; the same at each call.
    void fillStatistics();
    /// Everything that a user of some weeks has: model, statistics, six transcripts, a vocabulary.
    void fill();

    [[nodiscard]] UiContext context();

    ScratchFolder folder;
    FakeUserDefaults defaults;
    AppSettings settings{defaults};
    FakeClock clock;
    FakeScheduler scheduler{&clock};
    StatsStore stats{folder.file(QStringLiteral("statistics.json")), Calendar(QTimeZone("Europe/Oslo"))};
    FakeBackgroundTransfers transfers;
    ModelManager models;
    ManagedModelSource modelSource{settings, models};
    FakeRecognizer engine;
    FakeAudioInput input;
    FakeSystemMemory memory;
    ModelFigures figures{{}, [this] { return memory.resident(); }};
    AudioRecorder recorder{input, clock};
    MicrophoneTest microphoneTest{input, clock, scheduler};
    FakePrivacyPermissions privacy;
    FakeProcesses processes;
    FakeWorkspace workspace;
    PermissionsService permissions{{privacy, processes, workspace, scheduler},
                                   QStringLiteral("com.dunio.Tulvane")};
    FakePasteboards boards;
    FakeKeyPosting keys;
    FakeFocusedElements elements;
    TextInserter inserter{{boards, keys, elements, privacy, scheduler}};
    FakeGlobalHotkeys globalHotkeys;
    KeyboardShortcuts shortcuts{defaults, globalHotkeys};
    FakeModifierEvents modifiers;
    HotkeyController hotkeys{settings, shortcuts, modifiers, clock};
    FakeSounds sounds;
    FakePresentation presentation;
    FakeKeyboardGrab keyboard;
    FakeLoginItem loginItem;
    FakeStatusItem statusItem; ///< in a bar, with an icon
    ComputingStatus computing;
    int relaunches = 0;
    int quits = 0;
    int beeps = 0;
    QStringList announced; ///< to screen readers, oldest first
    ExchangeableIndicator indicator;
    DictationSession session;
    /// Two seconds.
    Recognizer::Samples demoSpeech = std::make_shared<const std::vector<float>>(32000, 0.1F);
    Demonstration demonstration{{.settings = settings,
                                 .engine = engine,
                                 .sounds = sounds,
                                 .scheduler = scheduler,
                                 .modelFile = QStringLiteral("/demo.bin"),
                                 .speech = [this](AppLanguage) { return demoSpeech; }}};
    FakeIndicatorPanel* panel = nullptr; ///< the indicator's, once that has been shown
    UserInterface ui;
    DictationController controller;
};

} // namespace tulvane::test
