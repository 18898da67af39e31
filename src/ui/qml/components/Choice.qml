import QtQuick
import QtQuick.Templates as T
import Tulvane

// One of several that exclude each other, with what it means. It is chosen where it is `chosen`, and asks to be
// by `clicked`; arrow keys go to its neighbours.
T.RadioButton {
    id: choice

    property bool chosen: false
    property string explanation: ""

    checked: chosen
    autoExclusive: false
    // A screen reader sets `checked` itself; what is chosen decides what is shown.
    onCheckedChanged: {
        if (checked === chosen)
            return;
        if (checked)
            clicked();
        checked = Qt.binding(() => chosen);
    }
    implicitHeight: words.height + 2 * Theme.small
    // A group is one stop of Tab.
    focusPolicy: chosen ? Qt.StrongFocus : Qt.ClickFocus
    Accessible.name: text
    Accessible.description: explanation
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        RoundBox {
            id: ring
            x: Theme.small
            y: Theme.small + 1
            width: 18
            height: 18
            radius: 9
            color: choice.chosen ? Theme.accent : Theme.field
            border.width: choice.chosen ? 0 : 1
            border.color: Theme.controlBorder

            RoundBox {
                anchors.centerIn: parent
                visible: choice.chosen
                width: 8
                height: 8
                radius: 4
                color: Theme.accentInk
            }
        }
        Column {
            id: words
            x: ring.x + ring.width + 10
            y: Theme.small
            width: parent.width - x - Theme.small
            spacing: 2

            Label {
                width: parent.width
                text: choice.text
                font.weight: choice.chosen ? Font.Medium : Font.Normal
                Accessible.ignored: true
            }
            Label {
                width: parent.width
                visible: text !== ""
                kind: Label.Caption
                secondary: true
                text: choice.explanation
                Accessible.ignored: true
            }
        }
    }
    background: RoundBox {
        radius: Theme.controlRadius
        color: choice.down ? Theme.pressed : choice.hovered ? Theme.hover : "transparent"

        FocusRing { shown: choice.visualFocus }
    }
}
