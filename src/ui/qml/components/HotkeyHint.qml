pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// How a dictation is begun: the hotkey as keys, within a sentence; or the way to choose one.
Flow {
    id: hint

    required property HomeViewModel model

    signal chooseWanted()

    spacing: 6

    component Piece: Label {
        height: 26
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.NoWrap
        secondary: true
    }

    Piece {
        visible: hint.model.hasHotkey
        text: hint.model.hotkeyVerb
    }
    Repeater {
        model: hint.model.hotkeys

        Row {
            required property int index
            required property var modelData

            spacing: hint.spacing

            Piece {
                visible: parent.index > 0
                text: Words.translate(" or ").trim()
            }
            KeyCaps { caps: parent.modelData }
        }
    }
    Piece {
        visible: hint.model.hasHotkey
        text: Words.translate("and speak into any text field")
    }
    Piece {
        visible: !hint.model.hasHotkey
        text: Words.translate("No hotkey yet –")
    }
    Link {
        objectName: "home.chooseHotkey"
        visible: !hint.model.hasHotkey
        height: 26
        text: Words.translate("choose one in Settings")
        onClicked: hint.chooseWanted()
    }
}
