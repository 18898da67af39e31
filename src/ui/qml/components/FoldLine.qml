import QtQuick
import Tulvane

// What is done, in one line; pressing it shows the rest.
Pressable {
    id: line

    property string title
    property string caption

    implicitHeight: 44
    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.description: caption

    RoundBox {
        anchors.fill: parent
        anchors.margins: 1
        radius: Theme.cardRadius - 1
        color: line.down ? Theme.pressed : line.hovered ? Theme.hover : "transparent"

        FocusRing {
            shown: line.visualFocus
            anchors.margins: 1
            radius: Theme.cardRadius - 2
        }
    }
    Symbol {
        id: mark
        x: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        name: "checkmark.circle.fill"
        size: 20
        color: Theme.success
    }
    Label {
        id: heading
        x: mark.x + mark.width + Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        font.weight: Font.Medium
        text: line.title
        Accessible.ignored: true
    }
    Label {
        x: heading.x + heading.width + Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        kind: Label.Caption
        secondary: true
        text: line.caption
        Accessible.ignored: true
    }
    Symbol {
        x: parent.width - width - Theme.large
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.right"
        size: 15
        color: Theme.secondaryText
    }
}
