import QtQuick
import QtQuick.Templates as T
import Tulvane

// Asks before something is destroyed. Escape and the cancel button change nothing; the keyboard stands on
// the cancel button.
T.Popup {
    id: dialog

    property string title
    property string message
    property string action

    signal confirmed()

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: 400
    height: content.implicitHeight + 2 * padding
    padding: Theme.huge
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    onOpened: cancel.forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.dark ? "#a0000000" : "#590b1520"
    }

    background: RoundBox {
        radius: 14
        color: Theme.popup
        border.width: 1
        border.color: Theme.controlBorder
    }

    contentItem: Column {
        id: content
        spacing: Theme.small
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title

        Label {
            width: parent.width
            kind: Label.Heading
            text: dialog.title
        }
        BalancedLabel {
            width: parent.width
            secondary: true
            text: dialog.message
        }
        Item {
            width: 1
            height: Theme.small
        }
        Row {
            anchors.right: parent.right
            spacing: Theme.small

            PushButton {
                id: cancel
                objectName: "confirm.cancel"
                text: Words.translate("Cancel")
                onClicked: dialog.close()
            }
            PushButton {
                objectName: "confirm.action"
                look: PushButton.Danger
                text: dialog.action
                onClicked: {
                    dialog.close();
                    dialog.confirmed();
                }
            }
        }
    }
}
