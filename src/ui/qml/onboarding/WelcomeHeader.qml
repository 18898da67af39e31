import QtQuick
import Tulvane

// What the program is, for a user who sees it for the first time.
Item {
    id: header

    implicitHeight: Math.max(icon.height, words.height)

    Image {
        id: icon
        anchors.verticalCenter: parent.verticalCenter
        source: "qrc:/icons/com.dunio.Tulvane.svg"
        sourceSize { width: 60; height: 60 }
    }
    Column {
        id: words
        x: icon.width + Theme.large
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - x
        spacing: 2

        Label {
            width: parent.width
            kind: Label.LargeTitle
            text: Words.translate("Welcome to Tulvane")
        }
        BalancedLabel {
            width: parent.width
            secondary: true
            text: Words.translate("Press a hotkey, speak Norwegian, and the text appears where your cursor is. Everything runs on your Mac.")
        }
    }
}
