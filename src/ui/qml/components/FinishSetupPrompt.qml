import QtQuick
import QtQuick.Templates as T
import Tulvane

// The way back to a setup that is not finished.
T.AbstractButton {
    id: prompt

    required property SetupViewModel setup

    objectName: "sidebar.finishSetup"
    implicitHeight: words.height + 2 * 10
    focusPolicy: Qt.StrongFocus
    text: Words.translate("Finish setup")
    Accessible.name: text
    Accessible.description: setup.missingText
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    onClicked: setup.finishSetup()

    contentItem: Item {
        Symbol {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            name: "sparkles"
            size: 20
            color: Theme.accentSoftInk
        }
        Column {
            id: words
            x: 40
            y: 10
            width: parent.width - x - 26
            spacing: 1

            Label {
                width: parent.width
                font.weight: Font.DemiBold
                color: Theme.accentSoftInk
                text: prompt.text
                Accessible.ignored: true
            }
            Label {
                width: parent.width
                kind: Label.Caption
                color: Theme.accentSoftInk
                text: prompt.setup.missingText
                Accessible.ignored: true
            }
        }
        Symbol {
            x: parent.width - width - 10
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.right"
            size: 14
            color: Theme.accentSoftInk
        }
    }
    background: RoundBox {
        radius: 10
        color: Theme.accentSoft
        border.width: prompt.hovered || prompt.down ? 1 : 0
        border.color: Theme.accent

        FocusRing { shown: prompt.visualFocus }
    }
}
