import QtQuick
import QtQuick.Templates as T
import Tulvane

// A number in steps: minus, the number as `display` writes it, plus. Arrow keys work while it has the focus.
// `value` follows what it is bound to; `changed` reports the user's change.
FocusScope {
    id: stepper

    property int value: 0
    property int from: 0
    property int to: 100
    property int step: 1
    /// What PageUp and PageDown step by.
    property int page: 60
    property string display: String(value)
    property string label: ""

    readonly property bool visualFocus: activeFocus
    // By these names assistive programs read the range.
    readonly property int minimumValue: from
    readonly property int maximumValue: to
    readonly property int stepSize: step

    signal changed(int value)

    function move(steps) {
        moveBy(steps * step);
    }
    function moveBy(way) {
        const target = Math.max(from, Math.min(to, value + way));
        if (target !== value)
            changed(target);
    }

    implicitHeight: Theme.controlHeight
    implicitWidth: 132
    activeFocusOnTab: true
    Accessible.role: Accessible.SpinBox
    Accessible.name: label
    Accessible.description: display
    Accessible.focusable: true
    Accessible.onIncreaseAction: move(1)
    Accessible.onDecreaseAction: move(-1)
    Keys.onUpPressed: move(1)
    Keys.onDownPressed: move(-1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Plus || event.key === Qt.Key_Right)
            move(1);
        else if (event.key === Qt.Key_Minus || event.key === Qt.Key_Left)
            move(-1);
        else if (event.key === Qt.Key_PageUp)
            moveBy(page);
        else if (event.key === Qt.Key_PageDown)
            moveBy(-page);
        else
            return;
        event.accepted = true;
    }

    component Half: T.AbstractButton {
        id: half

        property string symbol

        width: 34
        height: parent ? parent.height : 0
        focusPolicy: Qt.NoFocus
        autoRepeat: true
        // The stepper as a whole is what a screen reader works.
        Accessible.ignored: true

        background: RoundBox {
            anchors.fill: parent
            anchors.margins: 2
            radius: Theme.controlRadius - 2
            color: half.down ? Theme.pressed : half.hovered && half.enabled ? Theme.hover : "transparent"

            Symbol {
                anchors.centerIn: parent
                name: half.symbol
                size: 14
                color: half.enabled ? Theme.text : Theme.disabledText
            }
        }
    }

    RoundBox {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: Theme.card
        border.width: 1
        border.color: Theme.controlBorder

        FocusRing { shown: stepper.visualFocus }

        Half {
            symbol: "minus"
            enabled: stepper.value > stepper.from
            text: stepper.label + " −"
            onClicked: stepper.move(-1)
        }
        Digits {
            anchors.centerIn: parent
            figures: stepper.display
            // The stepper as a whole is what a screen reader reads.
            Accessible.ignored: true
        }
        Half {
            anchors.right: parent.right
            symbol: "plus"
            enabled: stepper.value < stepper.to
            text: stepper.label + " +"
            onClicked: stepper.move(1)
        }
    }
}
