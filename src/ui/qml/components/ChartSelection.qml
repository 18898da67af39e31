import QtQuick
import Tulvane

// The selected day's figures; without one, that there is something to select. Of one height in both, so that
// nothing below it moves.
Item {
    id: selection

    required property WordsChartViewModel model

    implicitHeight: 44

    Label {
        visible: selection.model.selected < 0
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: 4
        width: parent.width
        secondary: true
        font.pixelSize: 13
        text: Words.translate("Choose a bar to see its day.")
    }
    Item {
        visible: selection.model.selected >= 0
        y: 4
        width: parent.width
        height: parent.height

        Column {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - figure.width - Theme.large
            spacing: 3

            Row {
                spacing: Theme.small

                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    font.weight: Font.DemiBold
                    text: selection.model.selectedDay
                }
                Badge {
                    anchors.verticalCenter: parent.verticalCenter
                    text: Words.translate("Selected")
                }
            }
            Label {
                width: parent.width
                secondary: true
                font.pixelSize: 13
                text: selection.model.selectedLine
            }
        }
        Label {
            id: figure
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            kind: Label.Title
            text: selection.model.selectedWords
        }
    }
}
