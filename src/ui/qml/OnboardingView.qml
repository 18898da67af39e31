import QtQuick
import Tulvane

// The window that leads through the setup, one step open at a time; what is left and the way out stay in view.
Rectangle {
    id: view

    required property ViewModels models
    readonly property OnboardingViewModel guide: models.onboarding
    /// The place of the field at the end, after the four steps.
    readonly property int trial: 5
    /// What the user has opened; 0 while the guide leads.
    property int chosen: 0
    property bool wasDone: false
    readonly property int opened: chosen !== 0 ? chosen : guide.next !== 0 ? guide.next : trial

    function choose(place: int) {
        chosen = chosen === place || opened === place ? 0 : place;
        wasDone = isDone(place);
    }
    function isDone(place: int): bool {
        return place >= 1 && place <= 4 && guide.steps[place - 1].done;
    }
    /// What the user opened to do it is done: the guide leads on.
    function leadOn() {
        if (chosen !== 0 && !wasDone && isDone(chosen))
            chosen = 0;
    }

    /// A screen that is lower than the guide shows what is open.
    function revealOpened() {
        steps.reveal([microphone, accessibility, model, hotkey, tryOut][opened - 1]);
    }

    onOpenedChanged: unfolding.restart()

    color: Theme.window
    focus: true
    Keys.onPressed: event => steps.scroll(event)

    Connections {
        target: view.guide
        function onChanged() {
            view.leadOn();
        }
    }
    // A step that opens gets its height a moment later.
    Timer {
        id: unfolding
        interval: 300
        onTriggered: view.revealOpened()
    }
    WindowKeys {
        commands: view.models.commands
    }
    ScrollPage {
        id: steps
        width: parent.width
        height: bar.y
        compact: true
        onContentHeightChanged: if (unfolding.running) view.revealOpened()
        Accessible.name: Words.translate("Set up Tulvane")

        WelcomeHeader {
            width: parent.width
        }
        Item {
            width: parent.width
            height: heading.height + Theme.tiny

            Label {
                id: heading
                y: Theme.tiny
                kind: Label.Title
                text: Words.translate("Set up in four steps")
            }
            Label {
                anchors.right: parent.right
                anchors.baseline: heading.baseline
                secondary: true
                text: view.guide.progress
            }
        }
        MicrophoneStep {
            id: microphone
            width: parent.width
            models: view.models
            opened: view.opened === OnboardingViewModel.MicrophoneStep
            onPressed: view.choose(OnboardingViewModel.MicrophoneStep)
        }
        AccessibilityStep {
            id: accessibility
            width: parent.width
            models: view.models
            opened: view.opened === OnboardingViewModel.AccessibilityStep
            onPressed: view.choose(OnboardingViewModel.AccessibilityStep)
        }
        ModelStep {
            id: model
            width: parent.width
            models: view.models
            opened: view.opened === OnboardingViewModel.ModelStep
            onPressed: view.choose(OnboardingViewModel.ModelStep)
        }
        StepCard {
            id: hotkey
            width: parent.width
            step: view.guide.steps[OnboardingViewModel.HotkeyStep - 1]
            next: view.guide.next === OnboardingViewModel.HotkeyStep
            result: step.done ? view.guide.hotkey : ""
            opened: view.opened === OnboardingViewModel.HotkeyStep
            onPressed: view.choose(OnboardingViewModel.HotkeyStep)

            HotkeyConfiguration {
                model: view.models.hotkey
            }
        }
        TryStep {
            id: tryOut
            width: parent.width
            models: view.models
            opened: view.opened === view.trial
            onPressed: view.choose(view.trial)
        }
    }
    FinishBar {
        id: bar
        width: parent.width
        y: parent.height - height
        guide: view.guide
    }
}
