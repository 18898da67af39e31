import QtQuick
import QtQuick.Templates as T
import Tulvane

// Words that lead somewhere, in a line of text.
T.AbstractButton {
    id: link

    property int size: Theme.bodySize

    implicitWidth: words.implicitWidth
    implicitHeight: words.implicitHeight
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.role: Accessible.Link
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        id: words
        text: link.text
        font.family: Theme.family
        font.pixelSize: link.size
        font.weight: Font.Medium
        font.underline: link.hovered
        verticalAlignment: Text.AlignVCenter
        color: link.down ? Theme.accentPressed : link.hovered ? Theme.accentHover : Theme.accent
        textFormat: Text.PlainText
    }
    background: Item {
        FocusRing { shown: link.visualFocus }
    }
    HoverHandler { cursorShape: Qt.PointingHandCursor }
}
