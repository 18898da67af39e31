import QtQuick
import Tulvane

// The picker of a single key, and what its choice needs where that is missing.
Column {
    id: choice

    required property HotkeyViewModel model

    spacing: Theme.medium

    Item {
        width: parent.width
        height: Math.max(words.height, picker.height)

        Column {
            id: words
            anchors.verticalCenter: parent.verticalCenter
            width: picker.x - Theme.large
            spacing: 2

            Label {
                width: parent.width
                font.weight: Font.Medium
                text: Words.translate("Hold a single key")
            }
            Label {
                width: parent.width
                kind: Label.Caption
                secondary: true
                text: Words.translate("Works beside the key combination.")
            }
        }
        Picker {
            id: picker
            objectName: "hotkey.singleKey"
            x: parent.width - width
            anchors.verticalCenter: parent.verticalCenter
            label: Words.translate("Hold a single key")
            options: choice.model.singleKeys
            value: choice.model.singleKey
            onPicked: value => choice.model.singleKey = value
        }
    }
    KeyboardReading {
        visible: choice.model.readsEveryKey
        model: choice.model
    }
    StatusLine {
        width: parent.width
        visible: choice.model.watching === HotkeyViewModel.Granted && choice.model.singleKeyProblem === ""
        text: Words.translate("Input Monitoring granted")
    }
    Obstacle {
        width: parent.width
        visible: choice.model.watching === HotkeyViewModel.Granted && choice.model.singleKeyProblem !== ""
        text: choice.model.singleKeyProblem
    }
    Obstacle {
        width: parent.width
        visible: choice.model.watching === HotkeyViewModel.Missing
        text: choice.model.watchingObstacle || Words.translate("A single key needs the Input Monitoring permission.")

        PushButton {
            objectName: "hotkey.openInputMonitoring"
            text: Words.translate("Open Input Monitoring settings…")
            onClicked: choice.model.openInputMonitoringSettings()
        }
        PushButton {
            objectName: "hotkey.resetInputMonitoring"
            text: Words.translate("Reset & grant again")
            onClicked: choice.model.resetInputMonitoring()
        }
        BalancedLabel {
            width: parent.width
            kind: Label.Caption
            secondary: true
            text: Words.translate("Use this if Tulvane is already switched on in System Settings but the permission still shows as missing (happens after updates).")
        }
    }
}
