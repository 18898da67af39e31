import QtQuick
import Tulvane

// Shows which control has the keyboard; around its parent.
RoundBox {
    // The control has the focus, and got it by the keyboard.
    property bool shown: false

    anchors.fill: parent
    anchors.margins: -3
    radius: ((parent as RoundBox)?.radius ?? Theme.controlRadius) + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
    visible: shown
}
