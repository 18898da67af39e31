pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// The speech models: how the selected one stands, and all that are offered.
ScrollPage {
    id: page

    required property ViewModels models
    readonly property ModelGallery gallery: models.gallery

    Component.onCompleted: gallery.readLeftovers()

    title: Words.translate("Speech models")
    subtitle: Words.translate("Used to recognise and transcribe spoken Norwegian as accurately as possible. All variants are NB-Whisper Medium from the National Library of Norway and run fully on your Mac.")

    ModelStrip {
        width: parent.width
        gallery: page.gallery
    }

    Repeater {
        model: page.gallery.entries

        ModelCard {
            required property var modelData

            width: parent.width
            entry: modelData
        }
    }

    Card {
        width: parent.width
        visible: page.gallery.leftovers !== ""
        padding: 0

        SettingRow {
            last: true
            title: Words.translate("Unfinished downloads hold %1").arg(page.gallery.leftovers)
            caption: page.gallery.freeingCosts
                ? Words.translate("A download that you start again goes on from there. What is left alone for 30 days is removed.")
                : Words.translate("No model needs it any more. What is left alone for 30 days is removed.")

            PushButton {
                objectName: "models.free"
                symbol: "trash"
                text: Words.translate("Free space")
                Accessible.description: page.gallery.leftovers
                onClicked: page.gallery.freeingCosts ? question.open() : page.gallery.freeLeftovers()
            }
        }
    }

    ConfirmDialog {
        id: question
        title: Words.translate("Free %1").arg(page.gallery.leftovers)
        message: Words.translate("What has arrived of unfinished downloads will be removed. A download then starts from the beginning.")
        action: Words.translate("Free space")
        onConfirmed: page.gallery.freeLeftovers()
    }

    Item {
        width: parent.width
        height: Math.max(note.height, folder.height)

        Label {
            id: note
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - folder.width - Theme.huge
            kind: Label.Caption
            secondary: true
            text: Words.translate("Models are downloaded once from the model hub and stored in Application Support.")
        }
        PushButton {
            id: folder
            objectName: "models.folder"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "folder"
            text: Words.translate("Show in Finder")
            onClicked: page.gallery.showFolder()
        }
    }
}
