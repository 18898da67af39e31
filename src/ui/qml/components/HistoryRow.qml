import QtQuick
import Tulvane

// One dictation: its text, when and how long it was, and the way to copy it.
Item {
    id: row

    required property int index
    required property string transcript
    required property string time
    required property string length
    required property string words
    required property string copyLabel
    required property bool copied

    /// Before the name of each control, as in "home.copy.0".
    property string place
    property bool last: false
    /// A longer text is cut there until it is asked for.
    property int mostLines: 3
    property bool isOpen: false

    signal copyWanted()

    implicitHeight: text.height + details.height + Theme.tiny + 2 * 14
    Accessible.role: Accessible.ListItem
    Accessible.name: transcript
    Accessible.description: details.text

    Label {
        id: text
        x: Theme.large
        y: 14
        width: copy.x - x - Theme.medium
        maximumLineCount: row.isOpen ? 100000 : row.mostLines
        elide: Text.ElideRight
        lineHeight: 1.25
        text: row.transcript
    }
    Label {
        id: details
        x: Theme.large
        anchors.top: text.bottom
        anchors.topMargin: Theme.tiny
        kind: Label.Caption
        secondary: true
        text: row.time + "  ·  " + row.length + "  ·  " + row.words
    }
    Link {
        objectName: row.place + ".more." + row.index
        visible: text.truncated || row.isOpen
        anchors.left: details.right
        anchors.leftMargin: Theme.medium
        anchors.verticalCenter: details.verticalCenter
        size: Theme.captionSize
        text: row.isOpen ? Words.translate("Show less") : Words.translate("Show all")
        onClicked: row.isOpen = !row.isOpen
    }
    PushButton {
        id: copy
        objectName: row.place + ".copy." + row.index
        anchors.right: parent.right
        anchors.rightMargin: Theme.small
        y: 8
        // Wide enough for both of its usual words, so that nothing moves when they change.
        width: Math.max(implicitWidth, copiedWidth.width + 22 + leftPadding + rightPadding)
        look: PushButton.Plain
        symbol: row.copied ? "checkmark" : "doc.on.doc"
        text: row.copyLabel
        Accessible.description: row.transcript
        onClicked: row.copyWanted()

        TextMetrics {
            id: copiedWidth
            font: copy.font
            text: Words.translate("Copied")
        }
    }
    Rectangle {
        visible: !row.last
        x: Theme.large
        y: parent.height - 1
        width: parent.width - 2 * Theme.large
        height: 1
        color: Theme.separator
    }
}
