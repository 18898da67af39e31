import QtQuick
import Tulvane

// One section's entry at the side of a page.
Pressable {
    id: entry

    property string text
    property bool selected: false

    implicitHeight: Math.max(30, words.height + 10)
    activeFocusOnTab: selected || activeFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: selected

    RoundBox {
        anchors.fill: parent
        radius: 7
        color: entry.down ? Theme.pressed : entry.hovered ? Theme.hover : "transparent"

        FocusRing { shown: entry.visualFocus }
    }
    RoundBox {
        visible: entry.selected
        y: 6
        width: 3
        height: parent.height - 12
        radius: 1.5
        color: Theme.accent
    }
    Label {
        id: words
        x: Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - x - Theme.tiny
        font.pixelSize: 13
        font.weight: entry.selected ? Font.DemiBold : Font.Normal
        color: entry.selected ? Theme.text : Theme.secondaryText
        text: entry.text
        Accessible.ignored: true
    }
}
