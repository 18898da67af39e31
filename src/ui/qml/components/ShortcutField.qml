import QtQuick
import QtQuick.Templates as T
import Tulvane

// The field in which the key combination is set: a click, then the whole combination at once.
ShortcutKeys {
    id: field

    property string label: ""

    implicitWidth: Math.max(200, keys.width + 52)
    implicitHeight: 38
    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.description: recording || model.text === "" ? model.placeholder : model.text
    Accessible.focusable: true
    Accessible.onPressAction: record()

    RoundBox {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: Theme.field
        border.width: field.recording ? 2 : 1
        border.color: field.model.ruleBroken && field.recording ? Theme.danger
            : field.recording ? Theme.accent : Theme.controlBorder

        FocusRing { shown: field.visualFocus }
    }
    KeyCaps {
        id: keys
        x: 7
        anchors.verticalCenter: parent.verticalCenter
        visible: !field.recording
        caps: field.model.caps
        Accessible.ignored: true
    }
    Label {
        x: Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - x - 30
        visible: field.recording || field.model.caps.length === 0
        text: field.model.placeholder
        secondary: !field.recording
        color: field.recording ? Theme.accent : Theme.secondaryText
        elide: Text.ElideRight
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
    T.AbstractButton {
        id: clear
        objectName: field.objectName + ".clear"
        anchors.right: parent.right
        anchors.rightMargin: 5
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 26
        visible: field.model.caps.length > 0
        text: Words.translate("Clear the key combination")
        focusPolicy: Qt.TabFocus
        Accessible.role: Accessible.Button
        Accessible.name: text
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        onClicked: {
            field.model.clear();
            field.model.stop();
            field.forceActiveFocus(visualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason);
        }

        contentItem: Item {
            Symbol {
                anchors.centerIn: parent
                name: "xmark.circle.fill"
                size: 17
                color: clear.hovered || clear.down ? Theme.text : Theme.secondaryText
            }
        }
        background: RoundBox {
            radius: 13
            color: clear.down ? Theme.pressed : clear.hovered ? Theme.hover : "transparent"

            FocusRing { shown: clear.visualFocus }
        }
    }
}
