import QtQuick
import Tulvane

// One numbered step: a line that says what it is and how it stands, and below it, while it is open, its own controls.
Card {
    id: card

    required property var step
    /// Shows its controls.
    property bool opened: false
    // The first one that is left: what leads on from it stands out.
    property bool next: false
    /// What has come of it, once it is done.
    property string result: ""
    default property alias controls: body.data

    signal pressed()

    padding: opened ? Theme.large : 0
    border.color: next ? Theme.accent : Theme.border

    content: Column {
        width: card.width - 2 * card.padding
        spacing: Theme.medium

        Item {
            width: parent.width
            height: card.opened ? 30 : 42
            Accessible.role: Accessible.Heading
            Accessible.name: card.step.number + ". " + card.step.title + ", " + card.step.label

            StepLine {
                id: line
                objectName: "step." + card.step.number
                // As wide as the card, open or not.
                x: -card.padding
                y: card.opened ? -Theme.small : 0
                width: card.width
                height: 42 + (card.opened ? 4 : 0)
                number: card.step.number
                title: card.step.title
                symbol: card.step.symbol
                label: card.step.label
                done: card.step.done
                opened: card.opened
                result: card.opened ? "" : card.result
                onClicked: card.pressed()
            }
        }
        Column {
            id: body
            width: parent.width
            visible: card.opened
            spacing: 10
        }
    }
}
