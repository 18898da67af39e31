import QtQuick
import Tulvane

// Something that has happened and can be mended here: what, why, and the controls for it at the right.
RoundBox {
    id: bar

    enum Tone { Warning, Danger, Info }

    property int tone: NoticeBar.Warning
    property string symbol: "exclamationmark.triangle.fill"
    property string title
    property string text
    default property alias controls: holder.data
    readonly property color ink: [Theme.warning, Theme.danger, Theme.accentSoftInk][tone]

    width: parent ? parent.width : 0
    height: Math.max(words.height, holder.height) + 2 * 14
    radius: Theme.cardRadius
    color: [Theme.warningSoft, Theme.dangerSoft, Theme.accentSoft][tone]
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title
    Accessible.description: text

    Symbol {
        id: sign
        x: Theme.large
        y: words.y
        name: bar.symbol
        size: 19
        color: bar.ink
    }
    Column {
        id: words
        x: sign.x + sign.width + Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        width: holder.x - x - Theme.large
        spacing: 2

        Label {
            width: parent.width
            font.weight: Font.DemiBold
            text: bar.title
        }
        BalancedLabel {
            width: parent.width
            visible: text !== ""
            font.pixelSize: 13
            text: bar.text
        }
    }
    Row {
        id: holder
        x: bar.width - width - Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.small
    }
}
