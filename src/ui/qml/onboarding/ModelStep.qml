import QtQuick
import Tulvane

// The selected speech model: what it is, and its download.
StepCard {
    id: card

    required property ViewModels models

    step: models.onboarding.steps[OnboardingViewModel.ModelStep - 1]
    next: models.onboarding.next === OnboardingViewModel.ModelStep
    result: models.selectedModel.state === ModelEntry.Ready ? Words.translate("Speech model installed") : models.selectedModel.progressInBrief

    Column {
        width: parent.width
        spacing: Theme.tiny

        BalancedLabel {
            width: parent.width
            secondary: true
            text: Words.translate("NB-Whisper Medium from the National Library of Norway runs fully on-device. One-time download of about 540 MB.")
        }
        BalancedLabel {
            width: parent.width
            kind: Label.Caption
            secondary: true
            text: Words.translate("Other variants (full precision, verbatim, semantic) are available under Models in the main window.")
        }
    }
    DownloadControl {
        width: parent.width
        name: "onboarding.model"
        primary: card.next
        entry: card.models.selectedModel
        done: StatusLine {
            width: parent.width
            text: Words.translate("Speech model installed")
        }
    }
    HearDemo {
        objectName: "onboarding.demo"
        visible: card.models.selectedModel.state !== ModelEntry.Ready
        width: parent.width
        model: card.models.demonstration
    }
}
