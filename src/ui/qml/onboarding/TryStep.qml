import QtQuick
import Tulvane

// The first dictation, into a field of the guide itself.
Card {
    id: card

    required property ViewModels models
    property bool opened: false
    readonly property TryOutViewModel trial: models.tryOut
    readonly property MicrophoneViewModel microphone: models.microphone
    readonly property bool heardInFront: opened && trial.listening && Window.active

    signal pressed()

    padding: opened ? Theme.large : 0
    // The words go where the keyboard is.
    onHeardInFrontChanged: if (heardInFront) field.editor.forceActiveFocus(Qt.OtherFocusReason)
    onOpenedChanged: if (opened) microphone.refresh()

    Connections {
        target: card.trial
        function onTextLeft(text: string) {
            if (card.opened && card.Window.active)
                field.editor.insert(field.editor.length, text);
        }
    }

    content: Column {
        width: card.width - 2 * card.padding
        spacing: 10

        Item {
            width: parent.width
            height: card.opened ? 30 : 42
            Accessible.role: Accessible.Heading
            Accessible.name: line.title

            StepLine {
                id: line
                objectName: "step.try"
                x: -card.padding
                y: card.opened ? -Theme.small : 0
                width: card.width
                height: 42 + (card.opened ? 4 : 0)
                enabled: card.trial.ready
                symbol: "mic.fill"
                title: Words.translate("Try it here")
                done: card.trial.done
                opened: card.opened
                result: card.opened || card.trial.ready ? "" : Words.translate("Once the steps above are done")
                onClicked: card.pressed()
            }
        }
        Column {
            width: parent.width
            visible: card.opened
            spacing: 10

            Label {
                width: parent.width
                secondary: true
                text: card.trial.hint
            }
            TextBox {
                id: field
                objectName: "onboarding.try"
                width: parent.width
                implicitHeight: 64
                label: line.title
                placeholder: Words.translate("Your words appear here.")
            }
            Item {
                width: parent.width
                height: Math.max(22, status.height)

                LevelMeter {
                    id: meter
                    objectName: "onboarding.meter"
                    anchors.verticalCenter: parent.verticalCenter
                    level: card.microphone.listening ? card.microphone.level : 0
                    moving: card.Window.visibility !== Window.Hidden
                    tint: card.microphone.listening ? Theme.accent : Theme.controlBorder
                }
                Label {
                    id: status
                    objectName: "onboarding.trial"
                    x: meter.width + Theme.small
                    anchors.verticalCenter: parent.verticalCenter
                    width: parent.width - x
                    maximumLineCount: 2
                    elide: Text.ElideRight
                    secondary: !praised
                    color: praised ? Theme.success : Theme.secondaryText
                    text: card.trial.status !== "" ? card.trial.status
                        : praised ? Words.translate("That is all. It works like this in every text field.")
                        : card.microphone.name

                    readonly property bool praised: card.trial.done && card.trial.status === ""
                }
            }
        }
    }
}
