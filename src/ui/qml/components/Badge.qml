import QtQuick
import Tulvane

// A word on a tinted ground.
RoundBox {
    id: badge

    enum Tone { Accent, Success, Warning, Danger, Neutral }

    property alias text: words.text
    property string symbol: ""
    property int tone: Badge.Accent
    readonly property color ink: [Theme.accentSoftInk, Theme.success, Theme.warning, Theme.danger, Theme.secondaryText][tone]

    implicitWidth: row.implicitWidth + 16
    implicitHeight: 22
    radius: 11
    color: [Theme.accentSoft, Theme.successSoft, Theme.warningSoft, Theme.dangerSoft, Theme.hover][tone]

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 4

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: badge.symbol !== ""
            name: badge.symbol
            size: 13
            color: badge.ink
        }
        Label {
            id: words
            kind: Label.Caption
            font.weight: Font.Medium
            color: badge.ink
        }
    }
}
