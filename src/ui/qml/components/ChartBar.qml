import QtQuick
import QtQuick.Templates as T
import Tulvane

// One day of the chart: a column as high as the plot, so that an empty day can be pointed at too.
T.AbstractButton {
    id: column

    property var day: null
    /// The bar's height, as a share of the plot's.
    property real share: 0
    property bool isSelected: false
    readonly property bool stands: isSelected || (day?.isToday ?? false)

    hoverEnabled: true
    text: !day ? "" : isSelected ? day.name + ", " + Words.translate("Selected") : day.name
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: isSelected
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: RoundBox {
        x: -1
        y: -8
        width: column.width + 2
        height: column.height + 8
        radius: 6
        color: column.isSelected ? Theme.accentSoft : column.hovered ? Theme.hover : "transparent"
        opacity: column.isSelected || column.hovered ? 1 : 0

        Behavior on opacity {
            NumberAnimation { duration: Theme.quick }
        }

        FocusRing {
            shown: column.visualFocus
            anchors.margins: 0
            radius: 6
        }
    }
    contentItem: Item {
        RoundBox {
            id: bar
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            width: Math.max(3, Math.min(28, Math.round(column.width * 0.62)))
            // An empty day is a line, and one with a single word can be told from it.
            height: column.share > 0 ? Math.max(5, column.height * column.share) : 2
            radius: Math.min(4, width / 2, height / 2)
            color: column.share === 0 ? Theme.controlBorder
                : column.stands || column.hovered ? Theme.accent : Theme.bar

            Behavior on height {
                NumberAnimation { duration: Theme.slow; easing.type: Easing.OutCubic }
            }
            // Its foot stands square on the line.
            RoundBox {
                visible: column.share > 0
                width: parent.width
                height: parent.height / 2
                anchors.bottom: parent.bottom
                color: parent.color
            }
        }
    }
}
