import QtQuick
import QtQuick.Templates as T
import Tulvane

// A field for the words that are looked for. Escape empties it.
T.TextField {
    id: field

    property string label: ""

    implicitHeight: Theme.controlHeight
    implicitWidth: 220
    leftPadding: 32
    rightPadding: Theme.medium
    verticalAlignment: TextInput.AlignVCenter
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentInk
    font.family: Theme.family
    font.pixelSize: Theme.bodySize
    selectByMouse: true
    activeFocusOnTab: true
    Accessible.role: Accessible.EditableText
    Accessible.searchEdit: true
    Accessible.name: label
    Keys.onEscapePressed: event => {
        event.accepted = text !== "";
        clear();
    }

    background: RoundBox {
        radius: Theme.controlRadius
        color: Theme.field
        border.width: 1
        border.color: Theme.controlBorder

        FocusRing { shown: field.activeFocus }

        Symbol {
            x: 9
            anchors.verticalCenter: parent.verticalCenter
            name: "magnifyingglass"
            size: 15
            color: Theme.secondaryText
        }
        Label {
            x: field.leftPadding
            anchors.verticalCenter: parent.verticalCenter
            visible: field.text === "" && field.preeditText === ""
            color: Theme.disabledText
            text: field.label
            Accessible.ignored: true
        }
    }
}
