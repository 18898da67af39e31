pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tulvane

// A choice among few: `options` are objects with `value` and `title`; `value` is the chosen one's. The user's
// choice is reported by `picked`, and shown once `value` has followed.
T.ComboBox {
    id: picker

    property var options: []
    property var value
    property string label: ""

    signal picked(var value)

    model: options
    textRole: "title"
    valueRole: "value"
    currentIndex: options.findIndex(option => option.value === value)
    displayText: currentIndex < 0 ? "" : options[currentIndex].title
    implicitHeight: Theme.controlHeight
    implicitWidth: Math.max(140, widest.width + 46)
    leftPadding: Theme.medium
    rightPadding: 30
    focusPolicy: Qt.StrongFocus
    font.family: Theme.family
    font.pixelSize: Theme.bodySize
    Accessible.name: label
    Accessible.description: displayText
    onActivated: index => {
        const chosen = options[index].value;
        // The binding to `value` must outlive the template's own assignment.
        currentIndex = Qt.binding(() => options.findIndex(option => option.value === value));
        picked(chosen);
    }
    Keys.onReturnPressed: popup.open()

    TextMetrics {
        id: widest
        font: picker.font
        text: picker.options.reduce((longest, option) => option.title.length > longest.length ? option.title : longest, "")
    }

    contentItem: Text {
        text: picker.displayText
        font: picker.font
        color: picker.enabled ? Theme.text : Theme.disabledText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }

    indicator: Symbol {
        x: picker.width - width - 9
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.up.chevron.down"
        size: 14
        color: picker.enabled ? Theme.secondaryText : Theme.disabledText
    }

    background: RoundBox {
        radius: Theme.controlRadius
        color: !picker.enabled ? Theme.hover : picker.down || picker.hovered ? Theme.hover : Theme.card
        border.width: 1
        border.color: picker.enabled ? Theme.controlBorder : Theme.border

        FocusRing { shown: picker.visualFocus }
    }

    delegate: T.ItemDelegate {
        id: option

        required property int index
        required property var modelData

        width: ListView.view.width
        implicitHeight: 32
        text: modelData.title
        highlighted: picker.highlightedIndex === index
        Accessible.name: text

        contentItem: Text {
            leftPadding: 30
            text: option.text
            font: picker.font
            color: option.highlighted ? Theme.accentInk : Theme.text
            verticalAlignment: Text.AlignVCenter
            textFormat: Text.PlainText
        }
        background: RoundBox {
            radius: 5
            color: option.highlighted ? Theme.accent : "transparent"

            Symbol {
                x: 8
                anchors.verticalCenter: parent.verticalCenter
                visible: option.index === picker.currentIndex
                name: "checkmark"
                size: 15
                color: option.highlighted ? Theme.accentInk : Theme.text
            }
        }
    }

    popup: T.Popup {
        y: picker.height + 4
        x: picker.width - width
        width: Math.max(picker.width, widest.width + 62)
        implicitHeight: Math.min(list.contentHeight + 10, 320)
        padding: 5

        contentItem: ListView {
            id: list
            clip: true
            model: picker.popup.visible ? picker.delegateModel : null
            currentIndex: picker.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
        }
        background: RoundBox {
            radius: 9
            color: Theme.popup
            border.width: 1
            border.color: Theme.controlBorder
        }
    }
}
