import QtQuick
import Tulvane

// Shows which control the keyboard speaks to; around `control`, when the focus came by the keyboard.
RoundBox {
    property Item control: parent
    property bool shown: control.visualFocus === true

    anchors.fill: parent
    anchors.margins: -3
    radius: (parent.radius ?? Theme.controlRadius) + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
    visible: shown
}
