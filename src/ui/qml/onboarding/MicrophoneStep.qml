import QtQuick
import Tulvane

// Leave to record: to be asked for, refused, or given.
StepCard {
    id: card

    required property ViewModels models
    readonly property OnboardingViewModel guide: models.onboarding

    step: guide.steps[OnboardingViewModel.MicrophoneStep - 1]
    next: guide.next === OnboardingViewModel.MicrophoneStep
    result: guide.microphone === OnboardingViewModel.Granted ? Words.translate("Microphone access granted") : ""

    BalancedLabel {
        width: parent.width
        secondary: true
        text: Words.translate("Records your voice only while the hotkey is active. Audio stays on this Mac and is never uploaded.")
    }
    PushButton {
        objectName: "onboarding.allowMicrophone"
        visible: card.guide.microphone === OnboardingViewModel.Ask
        look: card.next ? PushButton.Primary : PushButton.Normal
        text: Words.translate("Allow microphone access")
        onClicked: card.guide.act(OnboardingViewModel.MicrophoneStep)
    }
    Obstacle {
        width: parent.width
        visible: card.guide.microphone === OnboardingViewModel.Denied
        text: card.models.permissions.microphoneObstacle

        Label {
            width: parent.width
            secondary: card.models.permissions.microphoneObstacle !== ""
            text: Words.translate("Access was denied. Switch Tulvane on under Privacy & Security › Microphone.")
        }
        PushButton {
            objectName: "onboarding.openMicrophone"
            text: Words.translate("Open Microphone settings…")
            onClicked: card.guide.act(OnboardingViewModel.MicrophoneStep)
        }
    }
    StatusLine {
        width: parent.width
        visible: card.guide.microphone === OnboardingViewModel.Granted
        text: Words.translate("Microphone access granted")
    }
}
