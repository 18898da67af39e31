import QtQuick
import Tulvane

// A setting that is on or off. `on` is what is stored; `switched` reports the user's change. The whole row is the
// switch's: pressing it anywhere turns it.
SettingRow {
    id: row

    property bool on: false
    property string name: ""

    signal switched(bool on)

    ground: RoundBox {
        anchors.fill: parent
        anchors.margins: 3
        radius: Theme.cardRadius - 3
        color: tap.pressed ? Theme.pressed : pointer.hovered && row.enabled ? Theme.hover : "transparent"

        FocusRing {
            shown: toggle.visualFocus
            anchors.margins: 0
            radius: Theme.cardRadius - 3
        }
    }

    HoverHandler {
        id: pointer
        parent: row
        enabled: row.enabled
    }
    TapHandler {
        id: tap
        parent: row
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: {
            toggle.forceActiveFocus(Qt.MouseFocusReason);
            toggle.turn();
        }
    }
    Toggle {
        id: toggle
        objectName: "settings." + row.name
        ringed: false
        text: row.title
        checked: row.on
        Accessible.description: row.caption
        // A screen reader sets `checked` itself and toggles nothing; what is stored decides what is shown.
        onCheckedChanged: {
            if (checked === row.on)
                return;
            if (enabled)
                row.switched(checked);
            checked = Qt.binding(() => row.on);
        }
    }
}
