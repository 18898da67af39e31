import QtQuick
import QtQuick.Templates as T
import Tulvane

// A switch, without its label: the row that holds it says what it is for, and names it (`text`).
T.Switch {
    id: toggle

    /// Whether it shows by itself that it has the keyboard; a row that does so for it says no.
    property bool ringed: true

    implicitWidth: 42
    implicitHeight: 24
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Keys.onReturnPressed: turn()
    Keys.onEnterPressed: turn()

    function turn() {
        toggle.toggle();
        toggled();
    }

    indicator: RoundBox {
        width: 42
        height: 24
        radius: 12
        color: !toggle.enabled ? Theme.track : toggle.checked ? Theme.accent : Theme.track
        border.width: toggle.checked && toggle.enabled ? 0 : 1
        border.color: toggle.enabled ? Theme.controlBorder : Theme.border

        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }

        RoundBox {
            x: toggle.checked ? parent.width - width - 3 : 3
            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            radius: 9
            color: !toggle.enabled ? Theme.disabledText : toggle.checked ? Theme.accentInk : Theme.dark ? Theme.text : "#ffffff"
            border.width: toggle.checked || Theme.dark || !toggle.enabled ? 0 : 1
            border.color: Theme.controlBorder

            Behavior on x {
                NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic }
            }
        }

        FocusRing { shown: toggle.visualFocus && toggle.ringed }
    }
}
