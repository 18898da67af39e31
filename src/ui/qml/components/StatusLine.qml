import QtQuick
import Tulvane

// One line that says that something is in order.
Row {
    id: line

    property string text

    spacing: 6

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        name: "checkmark.circle.fill"
        size: 17
        color: Theme.success
    }
    Label {
        width: line.width - 23
        text: line.text
        color: Theme.success
        font.weight: Font.Medium
    }
}
