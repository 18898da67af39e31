import QtQuick
import Tulvane

// How the selected model stands: ready, on its way, or missing; with its progress, and where it runs.
RoundBox {
    id: strip

    required property ModelGallery gallery
    readonly property ModelEntry model: gallery.selected
    readonly property bool isReady: gallery.statusKind === ModelGallery.Ready
    readonly property bool isUnderWay: gallery.statusKind === ModelGallery.Loading || gallery.statusKind === ModelGallery.Coming
    readonly property bool isFailed: model.state === ModelEntry.Failed

    implicitHeight: status.height + 2 * 14
    radius: Theme.cardRadius
    color: isReady ? Theme.successSoft : isUnderWay ? Theme.accentSoft : isFailed ? Theme.dangerSoft : Theme.warningSoft
    Accessible.role: Accessible.Grouping
    Accessible.name: heading.text + ": " + model.name

    Symbol {
        id: mark
        x: Theme.large
        y: status.y + heading.height + 1
        name: strip.isReady ? "checkmark.circle.fill"
            : strip.gallery.statusKind === ModelGallery.Loading ? "arrow.clockwise"
            : strip.isFailed ? "exclamationmark.triangle.fill" : "arrow.down.circle"
        size: 20
        color: strip.isReady ? Theme.success : strip.isUnderWay ? Theme.accentSoftInk
            : strip.isFailed ? Theme.danger : Theme.warning
    }
    Column {
        id: status
        y: 14
        x: mark.x + mark.width + Theme.medium
        width: parent.width - x - Theme.large
        spacing: 2

        Label {
            id: heading
            width: parent.width
            kind: Label.Caption
            text: Words.translate("The selected model")
        }
        Label {
            objectName: "models.status"
            visible: !strip.isUnderWay
            width: parent.width
            font.weight: Font.DemiBold
            text: strip.gallery.status
        }
        Digits {
            objectName: "models.status"
            visible: strip.isUnderWay
            font.weight: Font.DemiBold
            figures: strip.gallery.status
        }
        Label {
            objectName: "models.place"
            visible: text !== ""
            width: parent.width
            kind: Label.Caption
            text: strip.gallery.place
        }
        Item {
            visible: progress.visible
            width: 1
            height: Theme.tiny
        }
        ProgressLine {
            id: progress
            objectName: "models.progress"
            visible: strip.isUnderWay && strip.Window.visibility !== Window.Hidden
            width: parent.width
            label: strip.gallery.status
            value: strip.model.state === ModelEntry.Downloading ? strip.model.fraction : -1
        }
        Digits {
            objectName: "models.pace"
            visible: figures !== ""
            topPadding: 3
            font.pixelSize: Theme.captionSize
            figures: strip.model.pace
        }
    }
}
