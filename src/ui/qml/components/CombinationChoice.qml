import QtQuick
import Tulvane

// The field of the key combination, what is wrong with the one that is set, and how the field is used.
Column {
    id: choice

    required property ShortcutFieldViewModel model

    spacing: Theme.medium

    Item {
        width: parent.width
        height: Math.max(name.height, field.height)

        Label {
            id: name
            anchors.verticalCenter: parent.verticalCenter
            width: field.x - Theme.large
            font.weight: Font.Medium
            text: Words.translate("Key combination")
        }
        ShortcutField {
            id: field
            objectName: "hotkey.combination"
            x: parent.width - width
            anchors.verticalCenter: parent.verticalCenter
            label: name.text
            model: choice.model
        }
    }
    Obstacle {
        objectName: "hotkey.refusal"
        width: parent.width
        visible: choice.model.message !== ""
        text: choice.model.message
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text

        PushButton {
            objectName: "hotkey.useFreeOne"
            visible: choice.model.alternative !== ""
            text: choice.model.alternative
            onClicked: choice.model.useAlternative()
        }
    }
    Obstacle {
        objectName: "hotkey.problem"
        width: parent.width
        visible: choice.model.problem !== ""
        text: choice.model.problem
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text

        PushButton {
            objectName: "hotkey.useAlternative"
            visible: choice.model.alternative !== ""
            text: choice.model.alternative
            onClicked: choice.model.useAlternative()
        }
        PushButton {
            objectName: "hotkey.tryAgain"
            text: Words.translate("Try again")
            onClicked: choice.model.tryAgain()
        }
    }
    Column {
        width: parent.width
        spacing: 6

        BalancedLabel {
            width: parent.width
            kind: Label.Caption
            secondary: true
            text: choice.model.howToRecord
        }
        BalancedLabel {
            width: parent.width
            kind: Label.Caption
            secondary: true
            color: choice.model.ruleBroken ? Theme.danger : Theme.secondaryText
            text: choice.model.whatIsAccepted
        }
        BalancedLabel {
            width: parent.width
            kind: Label.Caption
            secondary: true
            text: choice.model.howToClear
        }
    }
}
