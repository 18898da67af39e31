import QtQuick
import QtQuick.Templates as T
import Tulvane

// One item of the setup checklist.
T.AbstractButton {
    id: row

    required property var item
    property bool last: false

    objectName: "setup." + item.id
    implicitHeight: Math.max(44, words.height + 2 * Theme.medium)
    focusPolicy: Qt.StrongFocus
    text: item.title
    Accessible.name: text
    Accessible.description: item.label
    Accessible.onPressAction: if (enabled) clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.TabFocusReason)

    contentItem: Item {
        Symbol {
            objectName: row.objectName + ".mark"
            anchors.verticalCenter: parent.verticalCenter
            name: row.item.done ? "checkmark.circle.fill" : "circle"
            size: 20
            color: row.item.done ? Theme.success : Theme.controlBorder
        }
        Symbol {
            x: 32
            anchors.verticalCenter: parent.verticalCenter
            name: row.item.symbol
            size: 17
            color: row.item.done ? Theme.disabledText : Theme.secondaryText
        }
        Label {
            id: words
            x: 60
            anchors.verticalCenter: parent.verticalCenter
            width: tip.x - x - Theme.medium
            text: row.text
            secondary: row.item.done
            Accessible.ignored: true
        }
        Label {
            id: tip
            x: parent.width - width - 28
            anchors.verticalCenter: parent.verticalCenter
            kind: Label.Caption
            secondary: true
            text: row.item.essential || row.item.done ? "" : row.item.label
            Accessible.ignored: true
        }
        Symbol {
            x: parent.width - width
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.right"
            size: 15
            color: Theme.secondaryText
        }
        Rectangle {
            visible: !row.last
            y: parent.height - 1
            width: parent.width
            height: 1
            color: Theme.separator
        }
    }
    background: RoundBox {
        x: -Theme.small
        width: row.width + 2 * Theme.small
        height: row.height - 1
        radius: Theme.controlRadius
        color: row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"

        FocusRing { shown: row.visualFocus }
    }
}
