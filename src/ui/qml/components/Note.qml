import QtQuick
import Tulvane

// Something that the user should know, on a tinted ground as wide as the page.
RoundBox {
    id: note

    property alias text: words.text
    property string symbol: "exclamationmark.triangle.fill"
    property int tone: Badge.Warning
    default property alias extra: holder.data
    readonly property color ink: [Theme.accentSoftInk, Theme.success, Theme.warning, Theme.danger, Theme.secondaryText][tone]

    implicitHeight: Math.max(words.height, holder.height) + 2 * Theme.medium
    radius: Theme.cardRadius
    color: [Theme.accentSoft, Theme.successSoft, Theme.warningSoft, Theme.dangerSoft, Theme.hover][tone]

    Symbol {
        x: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        name: note.symbol
        size: 18
        color: note.ink
    }
    Label {
        id: words
        x: Theme.large + 18 + Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - x - Theme.large - (holder.width > 0 ? holder.width + Theme.large : 0)
    }
    Item {
        id: holder
        anchors.right: parent.right
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}
