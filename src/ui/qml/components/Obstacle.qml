import QtQuick
import Tulvane

// Something that stands in the way: words on a tinted ground, and below them what can be done about it.
RoundBox {
    id: obstacle

    enum Tone { Warning, Danger, Neutral }

    property int tone: Obstacle.Warning
    property string symbol: tone === Obstacle.Neutral ? "info.circle" : "exclamationmark.triangle.fill"
    property string text
    default property alias actions: buttons.data
    readonly property color ink: [Theme.warning, Theme.danger, Theme.secondaryText][tone]

    implicitHeight: column.height + 2 * Theme.medium
    radius: Theme.controlRadius + 2
    color: [Theme.warningSoft, Theme.dangerSoft, Theme.hover][tone]

    Symbol {
        x: Theme.medium
        y: Theme.medium + 1
        name: obstacle.symbol
        size: 17
        color: obstacle.ink
    }
    Column {
        id: column
        x: Theme.medium + 27
        y: Theme.medium
        width: parent.width - x - Theme.medium
        spacing: Theme.small

        Label {
            width: parent.width
            visible: text !== ""
            // Not by the count of its lines, which changes in place here and would depend on itself.
            lineHeight: 1.2
            text: obstacle.text
        }
        Flow {
            id: buttons
            width: parent.width
            visible: children.length > 0
            spacing: Theme.small
        }
    }
}
