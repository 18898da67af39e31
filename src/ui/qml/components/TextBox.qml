import QtQuick
import QtQuick.Templates as T
import Tulvane

// A field for several lines. `value` is what is stored; `edited` reports a new text once typing has rested, and
// in any case before the field goes away.
RoundBox {
    id: box

    property string value: ""
    property string label: ""
    property string placeholder: ""
    property alias editor: area

    signal edited(string text)

    function flush() {
        rest.stop();
        if (area.text !== value)
            edited(area.text);
    }

    implicitHeight: 84
    radius: Theme.controlRadius
    color: Theme.field
    border.width: 1
    border.color: Theme.controlBorder
    onValueChanged: if (!rest.running && area.text !== value) area.text = value
    Component.onCompleted: area.text = value
    Component.onDestruction: flush()

    FocusRing {
        shown: area.activeFocus
    }

    Timer {
        id: rest
        interval: 500
        onTriggered: box.flush()
    }

    Flickable {
        id: view
        anchors.fill: parent
        anchors.margins: 1
        contentWidth: width
        contentHeight: area.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        T.TextArea {
            id: area
            objectName: "editor"
            width: view.width
            height: Math.max(view.height, contentHeight + topPadding + bottomPadding)
            leftPadding: 10
            rightPadding: 10
            topPadding: 8
            bottomPadding: 8
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.accentInk
            font.family: Theme.family
            font.pixelSize: Theme.bodySize
            activeFocusOnTab: true
            Keys.priority: Keys.BeforeItem
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            Accessible.name: box.label
            onTextChanged: if (text !== box.value) rest.restart()
            onActiveFocusChanged: if (!activeFocus) box.flush()
            onCursorRectangleChanged: {
                if (cursorRectangle.y < view.contentY)
                    view.contentY = Math.max(0, cursorRectangle.y - 8);
                else if (cursorRectangle.y + cursorRectangle.height + 8 > view.contentY + view.height)
                    view.contentY = cursorRectangle.y + cursorRectangle.height + 8 - view.height;
            }
        }
        Label {
            x: 10
            y: 8
            width: view.width - 20
            visible: area.text === "" && area.preeditText === ""
            color: Theme.disabledText
            text: box.placeholder
            Accessible.ignored: true
        }
    }
}
