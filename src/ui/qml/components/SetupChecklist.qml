pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// The steps to a working setup and a few things worth trying, each with its mark; clicking one leads to where
// it is done. Once all are done it is one line, which opens it.
Card {
    id: checklist

    required property SetupViewModel setup
    readonly property bool finished: setup.doneCount === setup.items.length
    property bool opened: false
    readonly property bool folded: finished && !opened

    function focusFirstLeft() {
        for (let i = 0; i < rows.count; ++i) {
            const row = rows.itemAt(i) as SetupRow;
            if (row && !row.item.done) {
                row.forceActiveFocus(Qt.TabFocusReason);
                return;
            }
        }
    }

    visible: !setup.checklistHidden
    padding: folded ? 0 : Theme.large
    Accessible.role: Accessible.List
    Accessible.name: heading.text

    Connections {
        target: checklist.setup
        function onChecklistWanted() {
            checklist.focusFirstLeft();
        }
    }

    Column {
        width: parent.width
        spacing: Theme.medium

        FoldLine {
            id: fold
            objectName: "setup.fold"
            width: parent.width
            visible: checklist.folded
            title: heading.text
            caption: checklist.setup.progress
            onClicked: {
                checklist.opened = true;
                hide.forceActiveFocus(byKeyboard ? Qt.TabFocusReason : Qt.MouseFocusReason);
            }
        }
        Item {
            width: parent.width
            visible: !checklist.folded
            height: Math.max(words.height, hide.height)

            Column {
                id: words
                width: hide.x - Theme.large
                anchors.verticalCenter: parent.verticalCenter
                spacing: 2

                Label {
                    id: heading
                    width: parent.width
                    kind: Label.Heading
                    text: Words.translate("Get the most out of Tulvane")
                }
                Label {
                    width: parent.width
                    kind: Label.Caption
                    secondary: true
                    text: checklist.setup.progress
                }
            }
            PushButton {
                id: hide
                objectName: "setup.hide"
                x: parent.width - width
                anchors.verticalCenter: parent.verticalCenter
                look: PushButton.Plain
                text: Words.translate("Hide checklist")
                onClicked: checklist.setup.hideChecklist()
            }
        }
        ProgressLine {
            objectName: "setup.progress"
            width: parent.width
            visible: !checklist.folded
            label: checklist.setup.progress
            value: checklist.setup.doneCount / checklist.setup.items.length
        }
        Column {
            width: parent.width
            visible: !checklist.folded

            // By number: the rows stay, and keep the focus, when a mark changes.
            Repeater {
                id: rows
                model: checklist.setup.items.length

                SetupRow {
                    required property int index

                    width: parent.width
                    item: checklist.setup.items[index]
                    last: index === rows.count - 1
                    onClicked: checklist.setup.act(item.id)
                }
            }
        }
    }
}
