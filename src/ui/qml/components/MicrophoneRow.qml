import QtQuick
import Tulvane

// Which microphone listens, how loud it is while it does, and a way to see that it works.
Column {
    id: row

    required property MicrophoneViewModel microphone
    /// Nothing listens, or moves, for a page that cannot be seen.
    property bool shown: true

    spacing: Theme.tiny
    onShownChanged: shown ? microphone.refresh() : microphone.stop()
    Component.onCompleted: microphone.refresh()
    Component.onDestruction: microphone.stop()

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.separator
    }
    Item {
        width: parent.width
        height: Theme.controlHeight

        LevelMeter {
            id: meter
            objectName: "home.meter"
            x: 2
            anchors.verticalCenter: parent.verticalCenter
            level: row.microphone.listening ? row.microphone.level : 0
            moving: row.shown
            tint: row.microphone.listening ? Theme.accent : Theme.controlBorder
        }
        Label {
            objectName: "home.microphone"
            x: 48 + Theme.large
            anchors.verticalCenter: parent.verticalCenter
            width: test.x - x - Theme.medium
            secondary: true
            font.pixelSize: 13
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
            text: row.microphone.name !== "" ? row.microphone.name : row.microphone.allowed ? Words.translate("No microphone")
                : Words.translate("Microphone") + ": " + Words.translate("Not granted")
        }
        PushButton {
            id: test
            objectName: "home.testMicrophone"
            x: parent.width - width + Theme.small
            anchors.verticalCenter: parent.verticalCenter
            look: PushButton.Plain
            enabled: row.microphone.canTest
            text: Words.translate("Test the microphone")
            Accessible.description: Words.translate("Three seconds of its level. Nothing is kept.")
            onClicked: row.microphone.test()
        }
    }
    Label {
        objectName: "home.microphoneAnswer"
        x: 48 + Theme.large
        width: parent.width - x
        visible: text !== ""
        font.pixelSize: 13
        color: row.microphone.troubled ? Theme.warning : row.microphone.testing ? Theme.secondaryText : Theme.success
        text: row.microphone.answer
    }
}
