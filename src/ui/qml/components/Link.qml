import QtQuick
import Tulvane

// Words that lead somewhere, in a line of text. No button of the templates: those give assistive programs their own
// role once one of them is there.
Pressable {
    id: link

    property string text
    property int size: Theme.bodySize

    implicitWidth: words.implicitWidth
    implicitHeight: words.implicitHeight
    Accessible.name: text
    Accessible.role: Accessible.Link

    FocusRing { shown: link.visualFocus }
    Text {
        id: words
        anchors.fill: parent
        text: link.text
        font.family: Theme.family
        font.pixelSize: link.size
        font.weight: Font.Medium
        font.underline: link.hovered
        verticalAlignment: Text.AlignVCenter
        color: link.down ? Theme.accentPressed : link.hovered ? Theme.accentHover : Theme.accent
        textFormat: Text.PlainText
    }
    HoverHandler { cursorShape: Qt.PointingHandCursor }
}
