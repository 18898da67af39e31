import QtQuick
import Tulvane

// One model of the gallery: what it is, what it is good for, and everything that can be done with it.
Card {
    id: card

    required property ModelEntry entry

    border.color: entry.selected ? Theme.accent : Theme.border
    border.width: entry.selected ? 2 : 1

    Column {
        width: parent.width
        spacing: Theme.small

        Item {
            width: parent.width
            height: Math.max(title.height, badges.height)

            Label {
                id: title
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - badges.width - Theme.medium
                kind: Label.Heading
                text: card.entry.name
            }
            Row {
                id: badges
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.small

                Badge {
                    visible: card.entry.loaded && !card.entry.selected
                    tone: Badge.Success
                    text: Words.translate("Loaded in memory")
                }
                Badge {
                    visible: card.entry.recommended
                    tone: Badge.Neutral
                    text: Words.translate("Recommended")
                }
                Badge {
                    visible: card.entry.selected
                    symbol: "checkmark"
                    text: Words.translate("Selected")
                }
            }
        }
        BalancedLabel {
            width: parent.width
            secondary: true
            text: card.entry.description
        }
        Label {
            objectName: "models." + card.entry.id + ".figures"
            visible: text !== ""
            width: parent.width
            kind: Label.Caption
            secondary: true
            text: card.entry.figures
        }
        Item {
            width: 1
            height: 2
        }
        DownloadControl {
            width: parent.width
            entry: card.entry
            name: "models." + card.entry.id
            primary: card.entry.selected
            // The strip above says how the selected one comes.
            brief: card.entry.selected

            done: Item {
                width: parent.width
                height: Theme.controlHeight

                PushButton {
                    objectName: "models." + card.entry.id + ".use"
                    visible: !card.entry.selected
                    text: Words.translate("Use this model")
                    Accessible.description: card.entry.name
                    onClicked: card.entry.use()
                }
                PushButton {
                    objectName: "models." + card.entry.id + ".delete"
                    anchors.right: parent.right
                    look: PushButton.Plain
                    symbol: "trash"
                    text: Words.translate("Delete")
                    Accessible.description: card.entry.name
                    onClicked: question.open()
                }
            }
        }
    }

    ConfirmDialog {
        id: question
        title: Words.translate("Delete model file")
        message: Words.translate("The model file will be removed from disk. You can download it again later.")
        action: Words.translate("Delete")
        onConfirmed: card.entry.remove()
    }
}
