import QtQuick
import Tulvane

// The line of a step in the guide; pressing it opens the step, or closes it.
Pressable {
    id: line

    property int number: 0
    property string title
    property string symbol
    property string label
    property bool done: false
    property bool opened: false
    property string result: ""

    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.description: label
    Accessible.pressed: opened

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
    RoundBox {
        x: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 26
        radius: 13
        color: line.done ? Theme.successSoft : line.opened ? Theme.accentSoft : Theme.hover

        Label {
            anchors.centerIn: parent
            visible: line.number > 0
            font.weight: Font.DemiBold
            color: line.done ? Theme.success : line.opened ? Theme.accentSoftInk : Theme.secondaryText
            text: line.number
            Accessible.ignored: true
        }
        Symbol {
            anchors.centerIn: parent
            visible: line.number === 0
            name: line.symbol
            size: 15
            color: line.done ? Theme.success : line.opened ? Theme.accentSoftInk : Theme.secondaryText
        }
    }
    Label {
        id: heading
        x: Theme.large + 26 + Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        kind: Label.Heading
        text: line.title
        Accessible.ignored: true
    }
    Label {
        x: heading.x + heading.width + Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        width: badge.x - x - Theme.small
        // The opened step shows the same text whole, so a narrow line leaves it out.
        visible: text !== "" && implicitWidth <= width
        secondary: true
        font.pixelSize: 13
        wrapMode: Text.NoWrap
        text: line.result
    }
    Badge {
        id: badge
        objectName: "step." + line.number + ".state"
        x: chevron.x - width - Theme.small
        anchors.verticalCenter: parent.verticalCenter
        visible: text !== ""
        tone: line.done ? Badge.Success : Badge.Neutral
        symbol: line.done ? "checkmark" : ""
        text: line.label
    }
    Symbol {
        id: chevron
        x: parent.width - width - Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        rotation: line.opened ? 90 : 0
        name: "chevron.right"
        size: 14
        color: Theme.secondaryText
    }
}
