import QtQuick
import Tulvane

// One numbered step: what it is, whether it is done, and its own controls below.
Card {
    id: card

    required property var step
    // The first one that is left: what leads on from it stands out.
    property bool next: false
    default property alias controls: body.data

    padding: Theme.large + 2
    content: Column {
        width: card.width - 2 * card.padding
        spacing: Theme.medium

        Item {
            width: parent.width
            height: 30
            Accessible.role: Accessible.Heading
            Accessible.name: card.step.number + ". " + card.step.title + ", " + card.step.label

            RoundBox {
                width: 30
                height: 30
                radius: 15
                color: card.step.done ? Theme.successSoft : Theme.accentSoft

                Label {
                    anchors.centerIn: parent
                    kind: Label.Heading
                    color: card.step.done ? Theme.success : Theme.accentSoftInk
                    text: card.step.number
                    Accessible.ignored: true
                }
            }
            Symbol {
                x: 42
                anchors.verticalCenter: parent.verticalCenter
                name: card.step.symbol
                size: 18
                color: Theme.secondaryText
            }
            Label {
                x: 68
                anchors.verticalCenter: parent.verticalCenter
                width: badge.x - x - Theme.medium
                kind: Label.Heading
                text: card.step.title
                Accessible.ignored: true
            }
            Badge {
                id: badge
                objectName: "step." + card.step.number + ".state"
                x: parent.width - width
                anchors.verticalCenter: parent.verticalCenter
                tone: card.step.done ? Badge.Success : Badge.Neutral
                symbol: card.step.done ? "checkmark" : ""
                text: card.step.label
            }
        }
        Column {
            id: body
            width: parent.width
            spacing: Theme.medium
        }
    }
}
