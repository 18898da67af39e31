import QtQuick
import Tulvane

// One page's entry in the sidebar.
Pressable {
    id: entry

    property string text
    property string symbol
    property bool selected: false
    property int count: 0

    implicitHeight: 36
    // The pages are one stop of Tab; arrows go from one to the next.
    activeFocusOnTab: selected
    Accessible.role: Accessible.PageTab
    Accessible.name: count > 0 ? text + " (" + count + ")" : text
    Accessible.selectable: true
    Accessible.selected: selected

    RoundBox {
        anchors.fill: parent
        radius: 8
        color: entry.selected ? Theme.accentSoft : entry.down ? Theme.pressed : entry.hovered ? Theme.hover : "transparent"

        FocusRing { shown: entry.visualFocus }
    }
    Symbol {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        name: entry.symbol
        size: 18
        color: entry.selected ? Theme.accentSoftInk : Theme.secondaryText
    }
    Label {
        x: 38
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - x - (bubble.visible ? 34 : Theme.small)
        text: entry.text
        elide: Text.ElideRight
        wrapMode: Text.NoWrap
        font.weight: entry.selected ? Font.DemiBold : Font.Normal
        color: entry.selected ? Theme.accentSoftInk : Theme.text
        Accessible.ignored: true
    }
    RoundBox {
        id: bubble
        visible: entry.count > 0
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20
        radius: 10
        color: Theme.accent

        Label {
            anchors.centerIn: parent
            kind: Label.Caption
            font.weight: Font.DemiBold
            color: Theme.accentInk
            text: entry.count
            Accessible.ignored: true
        }
    }
}
