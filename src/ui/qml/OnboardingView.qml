import QtQuick
import Tulvane

// The window that leads through the setup: the steps scroll, what is left and the way out stay in view.
Rectangle {
    id: view

    required property ViewModels models
    readonly property OnboardingViewModel guide: models.onboarding

    color: Theme.window
    focus: true
    Keys.onPressed: event => steps.scroll(event)

    WindowKeys {
        commands: view.models.commands
    }
    ScrollPage {
        id: steps
        width: parent.width
        height: bar.y
        Accessible.name: Words.translate("Set up Tulvane")

        WelcomeHeader {
            width: parent.width
        }
        Item {
            width: parent.width
            height: heading.height + Theme.small

            Label {
                id: heading
                y: Theme.small
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
            width: parent.width
            models: view.models
        }
        AccessibilityStep {
            width: parent.width
            models: view.models
        }
        ModelStep {
            width: parent.width
            models: view.models
        }
        StepCard {
            width: parent.width
            step: view.guide.steps[OnboardingViewModel.HotkeyStep - 1]

            HotkeyConfiguration {
                model: view.models.hotkey
            }
        }
    }
    FinishBar {
        id: bar
        width: parent.width
        y: parent.height - height
        guide: view.guide
    }
}
