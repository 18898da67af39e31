import QtQuick
import Tulvane

// Everything that can be done about one model's file: download it, watch it come, stop it, try again after a
// failure. Once the file is there, what stands in `done` is shown.
Column {
    id: control

    required property ModelEntry entry
    property string name: "download"
    property bool primary: true
    /// Something else shows the progress: the button that ends it is all that is needed.
    property bool brief: false
    property alias done: done.data
    /// One of the two buttons was pressed: the other, which takes its place, takes its focus.
    property bool handsOver: false

    spacing: Theme.small

    Row {
        visible: control.entry.state === ModelEntry.NotDownloaded || control.entry.state === ModelEntry.Failed
        spacing: Theme.medium

        PushButton {
            id: start
            objectName: control.name + ".start"
            look: control.primary ? PushButton.Primary : PushButton.Normal
            symbol: control.entry.state === ModelEntry.Failed ? "arrow.clockwise" : "arrow.down.circle"
            text: control.entry.state === ModelEntry.Failed ? Words.translate("Retry") : Words.translate("Download")
            Accessible.description: control.entry.name
            onClicked: {
                control.handsOver = activeFocus;
                control.entry.download();
            }
            onVisibleChanged: {
                if (visible && control.handsOver)
                    forceActiveFocus(Qt.OtherFocusReason);
            }
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            kind: Label.Caption
            secondary: true
            text: control.entry.size
        }
    }

    Item {
        visible: control.entry.state === ModelEntry.Downloading || control.entry.state === ModelEntry.Verifying && !control.brief
        width: parent.width
        height: Math.max(stop.height, progress.visible ? progress.height : 0)

        Column {
            id: progress
            visible: !control.brief
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - (stop.visible ? stop.width + Theme.large : 0)
            spacing: 6

            Digits {
                objectName: control.name + ".progress"
                font.pixelSize: Theme.captionSize
                color: Theme.secondaryText
                figures: control.entry.state === ModelEntry.Verifying ? Words.translate("Verifying…")
                    : control.entry.pace === "" ? control.entry.progress : control.entry.progress + "  ·  " + control.entry.pace
            }
            ProgressLine {
                width: parent.width
                label: control.entry.name
                value: control.entry.state === ModelEntry.Verifying ? -1 : control.entry.fraction
            }
        }
        PushButton {
            id: stop
            objectName: control.name + ".cancel"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: control.entry.state === ModelEntry.Downloading
            text: Words.translate("Cancel")
            Accessible.description: control.entry.name
            onClicked: {
                control.handsOver = activeFocus;
                control.entry.cancel();
            }
            onVisibleChanged: {
                if (visible && control.handsOver)
                    forceActiveFocus(Qt.OtherFocusReason);
            }
        }
    }

    Row {
        visible: control.entry.message !== ""
        width: parent.width
        spacing: 6

        Symbol {
            y: 1
            name: "exclamationmark.triangle.fill"
            size: 15
            color: Theme.danger
        }
        Label {
            objectName: control.name + ".message"
            width: parent.width - 21
            kind: Label.Caption
            color: Theme.danger
            text: control.entry.message
        }
    }

    Item {
        id: done
        visible: control.entry.state === ModelEntry.Ready && children.length > 0
        width: parent.width
        height: childrenRect.height
    }
}
