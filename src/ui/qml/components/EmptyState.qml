import QtQuick
import Tulvane

// What a page shows while it has nothing to show.
Column {
    id: state

    property string symbol
    property string title
    property string text

    spacing: Theme.small

    RoundBox {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 64
        height: 64
        radius: 32
        color: Theme.accentSoft

        Symbol {
            anchors.centerIn: parent
            name: state.symbol
            size: 30
            color: Theme.accentSoftInk
        }
    }
    Item {
        width: 1
        height: 4
    }
    Label {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        kind: Label.Heading
        text: state.title
    }
    BalancedLabel {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 400)
        horizontalAlignment: Text.AlignHCenter
        secondary: true
        text: state.text
    }
}
