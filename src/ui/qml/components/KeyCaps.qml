pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// A combination as keys: one cap for each of `caps`.
Row {
    id: keys

    property var caps: []

    spacing: 4
    Accessible.role: Accessible.StaticText
    Accessible.name: caps.join(" ")

    Repeater {
        model: keys.caps

        RoundBox {
            id: cap

            required property string modelData

            width: Math.max(26, word.implicitWidth + 14)
            height: 26
            radius: 6
            color: Theme.dark ? Theme.hover : "#ffffff"
            border.width: 1
            border.color: Theme.controlBorder

            RoundBox {
                x: 5
                y: parent.height - 2
                width: parent.width - 10
                height: 1
                color: Theme.controlBorder
            }
            Text {
                id: word
                anchors.centerIn: parent
                text: cap.modelData
                font.family: Theme.family
                font.pixelSize: 13
                font.weight: Font.Medium
                color: Theme.text
                textFormat: Text.PlainText
            }
        }
    }
}
