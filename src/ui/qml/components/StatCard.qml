import QtQuick
import Tulvane

// One figure: what it is, how much, and what that means.
RoundBox {
    id: card

    property string title
    property string value
    property string subtitle
    property string symbol

    implicitHeight: words.height + 2 * Theme.large
    radius: Theme.cardRadius
    color: Theme.card
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Column {
        id: words
        x: Theme.large
        y: Theme.large
        width: parent.width - 2 * Theme.large
        spacing: Theme.tiny

        Item {
            width: parent.width
            height: Math.max(sign.height, heading.height)

            Symbol {
                id: sign
                y: heading.lineCount > 1 ? 1 : (parent.height - height) / 2
                name: card.symbol
                size: 17
                color: Theme.accent
            }
            Label {
                id: heading
                x: sign.width + 7
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - x
                secondary: true
                font.pixelSize: 13
                font.weight: Font.Medium
                text: card.title
            }
        }
        Label {
            width: parent.width
            kind: Label.Figure
            text: card.value
            wrapMode: Text.NoWrap
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 18
        }
        Label {
            width: parent.width
            visible: text !== ""
            kind: Label.Caption
            secondary: true
            // A unit such as "words/min" stays in one piece.
            text: card.subtitle.replace("/", "/\u2060")
            Accessible.name: card.subtitle
        }
    }
}
