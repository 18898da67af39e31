import QtQuick
import Tulvane

// Something that stands in the way, and what to do about it: words on a tinted ground, and buttons below them.
Rectangle {
    id: notice

    enum Tone { Warning, Danger, Neutral }

    property int tone: Notice.Warning
    property string symbol: tone === Notice.Neutral ? "info.circle" : "exclamationmark.triangle.fill"
    property string text
    // What to do about it, in a line of its own.
    property string remedy: ""
    default property alias actions: buttons.data
    readonly property color ink: [Theme.warning, Theme.danger, Theme.secondaryText][tone]

    implicitHeight: column.height + 2 * Theme.medium
    radius: Theme.controlRadius + 2
    color: [Theme.warningSoft, Theme.dangerSoft, Theme.hover][tone]

    Symbol {
        x: Theme.medium
        y: Theme.medium + 1
        name: notice.symbol
        size: 17
        color: notice.ink
    }
    Column {
        id: column
        x: Theme.medium + 27
        y: Theme.medium
        width: parent.width - x - Theme.medium
        spacing: Theme.small

        Column {
            width: parent.width
            spacing: 2

            Label {
                width: parent.width
                visible: text !== ""
                text: notice.text
            }
            Label {
                width: parent.width
                visible: text !== ""
                kind: notice.text === "" ? Label.Body : Label.Caption
                text: notice.remedy
            }
        }
        Flow {
            id: buttons
            width: parent.width
            visible: children.length > 0
            spacing: Theme.small
        }
    }
}
