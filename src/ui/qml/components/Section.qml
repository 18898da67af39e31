import QtQuick
import Tulvane

// A group of rows under a heading, on one card, with lines between the rows.
Column {
    id: section

    property string title
    property string caption: ""
    default property alias rows: rows.data

    width: parent.width
    spacing: Theme.small

    Column {
        width: parent.width
        spacing: 2

        Label {
            width: parent.width
            kind: Label.Heading
            text: section.title
        }
        BalancedLabel {
            width: parent.width
            visible: text !== ""
            kind: Label.Caption
            secondary: true
            text: section.caption
        }
    }
    RoundBox {
        width: parent.width
        height: rows.height
        radius: Theme.cardRadius
        color: Theme.card
        border.width: 1
        border.color: Theme.border

        Column {
            id: rows
            width: parent.width
        }
    }
}
