import QtQuick
import QtQuick.Templates as T
import Tulvane

// A button; `Primary` for what the page is for, `Plain` for what stands in a row of text.
T.Button {
    id: button

    enum Style { Normal, Primary, Plain, Danger }

    property int look: PushButton.Normal
    property string symbol: ""
    readonly property color ink: !enabled ? Theme.disabledText
        : look === PushButton.Primary ? Theme.accentInk
        : look === PushButton.Danger ? Theme.dangerInk
        : look === PushButton.Plain ? Theme.accent : Theme.text

    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: look === PushButton.Plain ? Theme.small : 14
    rightPadding: leftPadding
    topPadding: 4
    bottomPadding: 4
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.ignored: !visible
    Accessible.onPressAction: if (enabled) clicked()
    font.family: Theme.family
    font.pixelSize: Theme.bodySize
    font.weight: Font.Medium
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight

        Row {
            id: row
            anchors.centerIn: parent
            spacing: 6

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.symbol !== ""
                name: button.symbol
                size: 16
                color: button.ink
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                text: button.text
                font: button.font
                color: button.ink
                textFormat: Text.PlainText
            }
        }
    }

    background: RoundBox {
        radius: Theme.controlRadius
        color: {
            if (button.look === PushButton.Plain)
                return button.down ? Theme.pressed : button.hovered ? Theme.hover : "transparent";
            if (!button.enabled)
                return Theme.hover;
            if (button.look === PushButton.Primary)
                return button.down ? Theme.accentPressed : button.hovered ? Theme.accentHover : Theme.accent;
            if (button.look === PushButton.Danger)
                return button.down || button.hovered ? Qt.darker(Theme.danger, 1.15) : Theme.danger;
            return button.down ? Theme.pressed : button.hovered ? Theme.hover : Theme.card;
        }
        border.width: button.look === PushButton.Normal ? 1 : 0
        border.color: button.enabled ? Theme.controlBorder : Theme.border

        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }

        FocusRing { shown: button.visualFocus }
    }
}
