import QtQuick
import QtQuick.Templates as T
import Tulvane

// One dictation: its text, which can be selected, when and how long it was, and what can be done with it.
Item {
    id: row

    required property int index
    required property string transcript
    required property string time
    required property string length
    required property string words
    required property string copyLabel
    required property bool copied
    required property string day

    /// Before the name of each control, as in "home.copy.0".
    property string place
    property bool last: false
    /// A longer text is cut there until it is asked for.
    property int mostLines: 3
    property bool isOpen: false
    /// The heading above the row; empty where the day is that of the row before.
    property string heading: ""
    /// Whether the text can be corrected and inserted again, beside being copied.
    property bool isTool: false
    property bool isEdited: false
    readonly property bool isCut: area.lineCount > mostLines
    readonly property real lineHeight: area.lineCount > 0 ? area.contentHeight / area.lineCount : 0

    signal copyWanted()
    signal insertWanted()
    signal corrected(string text)

    function edit(wanted: bool) {
        if (isEdited && !wanted)
            corrected(area.text);
        isEdited = wanted;
        if (wanted) {
            area.forceActiveFocus(Qt.TabFocusReason);
            area.cursorPosition = area.length;
        }
    }

    implicitHeight: details.y + details.height + 14
    Accessible.role: Accessible.ListItem
    Accessible.name: transcript
    Accessible.description: details.text

    Label {
        id: heading
        x: Theme.large
        y: visible ? 14 : 0
        visible: text !== ""
        kind: Label.Caption
        font.weight: Font.DemiBold
        color: Theme.secondaryText
        Accessible.role: Accessible.Heading
        text: row.heading
    }
    RoundBox {
        visible: row.isEdited
        x: frame.x - 7
        y: frame.y - 5
        width: frame.width + 14
        height: frame.height + 10
        radius: Theme.controlRadius
        color: Theme.field
        border.width: 1
        border.color: Theme.controlBorder

        FocusRing { shown: area.activeFocus }
    }
    Item {
        id: frame
        x: Theme.large
        y: (heading.visible ? heading.y + heading.height : 0) + 14
        width: copy.x - x - Theme.medium
        height: row.isOpen || row.isEdited || !row.isCut ? area.height : Math.floor(row.mostLines * row.lineHeight)
        clip: true

        T.TextArea {
            id: area
            objectName: row.place + ".text." + row.index
            width: parent.width
            height: contentHeight
            padding: 0
            readOnly: !row.isEdited
            selectByMouse: true
            persistentSelection: true
            activeFocusOnTab: row.isEdited
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.accentInk
            font.family: Theme.family
            font.pixelSize: Theme.bodySize
            Accessible.name: row.isEdited ? Words.translate("Correct the text") : row.transcript
            Keys.priority: Keys.BeforeItem
            Keys.onEscapePressed: event => {
                event.accepted = row.isEdited;
                if (!row.isEdited)
                    return;
                area.text = row.transcript;
                row.edit(false);
                correction.forceActiveFocus(Qt.TabFocusReason);
            }
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            onActiveFocusChanged: {
                if (!activeFocus && row.isEdited)
                    row.corrected(area.text);
                else if (!activeFocus)
                    deselect();
            }

            Binding {
                target: area
                property: "text"
                value: row.transcript
                when: !row.isEdited
                restoreMode: Binding.RestoreNone
            }
        }
        Label {
            visible: row.isCut && !row.isOpen && !row.isEdited
            x: parent.width - width
            y: parent.height - height
            leftPadding: 6
            text: "…"
            Accessible.ignored: true

            Rectangle {
                z: -1
                anchors.fill: parent
                color: Theme.card
            }
        }
    }
    Label {
        id: details
        x: Theme.large
        y: frame.y + frame.height + (row.isEdited ? Theme.small : Theme.tiny)
        kind: Label.Caption
        secondary: true
        text: row.time + "  ·  " + row.length + "  ·  " + row.words
    }
    Link {
        id: more
        objectName: row.place + ".more." + row.index
        x: details.x + details.width + Theme.medium
        anchors.verticalCenter: details.verticalCenter
        visible: row.isCut && !row.isEdited
        size: Theme.captionSize
        text: row.isOpen ? Words.translate("Show less") : Words.translate("Show all")
        onClicked: row.isOpen = !row.isOpen
    }
    Link {
        id: correction
        objectName: row.place + ".edit." + row.index
        x: (more.visible ? more.x + more.width : details.x + details.width) + Theme.medium
        anchors.verticalCenter: details.verticalCenter
        visible: row.isTool
        size: Theme.captionSize
        text: row.isEdited ? Words.translate("Done") : Words.translate("Correct")
        Accessible.role: Accessible.Button
        Accessible.description: row.transcript
        onClicked: row.edit(!row.isEdited)
    }
    Link {
        objectName: row.place + ".insert." + row.index
        x: correction.x + correction.width + Theme.medium
        anchors.verticalCenter: details.verticalCenter
        visible: row.isTool && !row.isEdited
        size: Theme.captionSize
        text: Words.translate("Insert again")
        Accessible.role: Accessible.Button
        Accessible.description: row.transcript
        onClicked: row.insertWanted()
    }
    PushButton {
        id: copy
        objectName: row.place + ".copy." + row.index
        x: row.width - width - Theme.small
        y: frame.y - 6
        // Wide enough for both of its usual words, so that nothing moves when they change.
        width: Math.max(implicitWidth, copiedWidth.width + 22 + leftPadding + rightPadding)
        look: PushButton.Plain
        symbol: row.copied ? "checkmark" : "doc.on.doc"
        text: row.copyLabel
        Accessible.description: row.transcript
        onClicked: {
            if (row.isEdited)
                row.corrected(area.text);
            row.copyWanted();
        }

        TextMetrics {
            id: copiedWidth
            font: copy.font
            text: Words.translate("Copied")
        }
    }
    Rectangle {
        visible: !row.last
        x: Theme.large
        y: parent.height - 1
        width: parent.width - 2 * Theme.large
        height: 1
        color: Theme.separator
    }
}
