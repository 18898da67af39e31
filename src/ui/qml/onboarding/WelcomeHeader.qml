import QtQuick
import Tulvane

// What the program is, for a user who sees it for the first time.
Column {
    id: header

    spacing: Theme.small
    bottomPadding: Theme.small

    Image {
        anchors.horizontalCenter: parent.horizontalCenter
        source: "qrc:/icons/com.dunio.Tulvane.svg"
        sourceSize { width: 72; height: 72 }
    }
    Label {
        width: parent.width
        topPadding: Theme.tiny
        horizontalAlignment: Text.AlignHCenter
        kind: Label.LargeTitle
        text: Words.translate("Welcome to Tulvane")
    }
    BalancedLabel {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 440)
        horizontalAlignment: Text.AlignHCenter
        secondary: true
        text: Words.translate("Press a hotkey, speak Norwegian, and the text appears where your cursor is. Everything runs on your Mac.")
    }
}
