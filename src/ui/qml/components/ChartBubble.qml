import QtQuick
import Tulvane

// The figures of the bar that has the pointer or the keyboard focus. A screen reader reads them from the bar.
RoundBox {
    id: bubble

    property string figure
    property string caption

    width: Math.max(words.width, 0) + 2 * Theme.medium
    height: words.height + 12
    radius: 8
    color: Theme.popup
    border.width: 1
    border.color: Theme.controlBorder

    Column {
        id: words
        x: Theme.medium
        y: 6

        Label {
            wrapMode: Text.NoWrap
            font.weight: Font.DemiBold
            text: bubble.figure
            Accessible.ignored: true
        }
        Label {
            wrapMode: Text.NoWrap
            kind: Label.Caption
            secondary: true
            text: bubble.caption
            Accessible.ignored: true
        }
    }
}
