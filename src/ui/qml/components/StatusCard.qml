import QtQuick
import Tulvane

// How things stand, in one word, and below it how to begin.
Card {
    id: card

    required property HomeViewModel model
    required property MicrophoneViewModel microphone
    readonly property int tone: model.tone
    readonly property bool isBusy: tone === DictationStatus.Loading || tone === DictationStatus.Working
    readonly property color ink: tone === DictationStatus.Error ? Theme.danger
        : tone === DictationStatus.Setup ? Theme.warning
        : tone === DictationStatus.Recording ? Theme.accentInk
        : tone === DictationStatus.Ready ? Theme.success : Theme.accentSoftInk
    readonly property color ground: tone === DictationStatus.Error ? Theme.dangerSoft
        : tone === DictationStatus.Setup ? Theme.warningSoft
        : tone === DictationStatus.Recording ? Theme.accent
        : tone === DictationStatus.Ready ? Theme.successSoft : Theme.accentSoft
    readonly property string sign: tone === DictationStatus.Error || tone === DictationStatus.Setup ? "exclamationmark.triangle.fill"
        : tone === DictationStatus.Recording ? "mic.fill"
        : isBusy ? "waveform"
        : tone === DictationStatus.Notice ? "text.bubble" : "mic.fill"

    signal chooseHotkeyWanted()

    Column {
        width: parent.width
        spacing: Theme.medium

        Item {
            width: parent.width
            height: Math.max(disc.height, words.height)

            RoundBox {
                id: disc
                anchors.verticalCenter: parent.verticalCenter
                width: 48
                height: 48
                radius: 24
                color: card.ground

                Behavior on color {
                    ColorAnimation { duration: Theme.quick }
                }

                Symbol {
                    anchors.centerIn: parent
                    name: card.sign
                    size: 23
                    color: card.ink
                }
            }
            Column {
                id: words
                x: disc.width + Theme.large
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - x
                spacing: Theme.tiny

                Row {
                    width: parent.width
                    spacing: Theme.medium

                    Label {
                        id: status
                        objectName: "home.status"
                        width: Math.min(implicitWidth, words.width - (progress.visible ? progress.width + Theme.medium : 0))
                        kind: Label.Heading
                        text: card.model.status
                    }
                    ProgressLine {
                        id: progress
                        // A hidden window's animation would go on unseen.
                        visible: card.isBusy && card.Window.visibility !== Window.Hidden
                        anchors.verticalCenter: parent.verticalCenter
                        width: 120
                        height: 4
                        value: -1
                        label: status.text
                    }
                }
                HotkeyHint {
                    width: parent.width
                    model: card.model
                    onChooseWanted: card.chooseHotkeyWanted()
                }
            }
        }
        MicrophoneRow {
            width: parent.width
            microphone: card.microphone
            shown: card.visible && card.Window.visibility !== Window.Hidden
        }
    }
}
