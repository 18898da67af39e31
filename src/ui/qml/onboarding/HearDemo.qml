import QtQuick
import Tulvane

// A whole dictation before anything is downloaded: the computer's own voice, and the demo model that writes.
Column {
    id: demo

    required property DemonstrationViewModel model

    spacing: Theme.small

    Row {
        width: parent.width
        spacing: Theme.medium

        PushButton {
            id: start
            objectName: "onboarding.hear"
            symbol: "speaker.wave.2.fill"
            text: Words.translate("Hear how it works")
            enabled: !demo.model.running
            Accessible.description: explanation.text
            onClicked: demo.model.start()
        }
        BalancedLabel {
            id: explanation
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - start.width - Theme.medium
            kind: Label.Caption
            secondary: true
            text: demo.model.running ? Words.translate("The voice is speaking…") : Words.translate("A synthetic voice says a sentence, and the bundled demo model writes it. Nothing is downloaded.")
        }
    }
    Label {
        objectName: "onboarding.heard"
        visible: text !== ""
        width: parent.width
        text: demo.model.text
        font.weight: Font.Medium
    }
    Label {
        visible: demo.model.text !== ""
        width: parent.width
        kind: Label.Caption
        secondary: true
        text: Words.translate("Written by the demo model, which knows a synthetic voice and little else. The models to download understand people.")
    }
    Label {
        visible: text !== ""
        width: parent.width
        kind: Label.Caption
        color: Theme.danger
        text: demo.model.failure
    }
}
