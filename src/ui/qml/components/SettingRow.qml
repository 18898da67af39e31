import QtQuick
import Tulvane

// One setting: its name and what it does at the left, its control at the right.
Item {
    id: row

    property string title
    property string caption: ""
    property bool last: false
    default property alias control: holder.data
    /// What lies below the row's words.
    property alias ground: ground.data
    /// What stands before the control, as another way to say it.
    property string aside: ""

    width: parent ? parent.width : 0
    implicitHeight: Math.max(words.height, holder.childrenRect.height) + 2 * Theme.medium
    opacity: enabled ? 1 : 0.75

    Item {
        id: ground
        anchors.fill: parent
    }
    Column {
        id: words
        x: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        width: (beside.visible ? beside.x : holder.x) - x - Theme.large
        spacing: 2

        Label {
            width: parent.width
            text: row.title
        }
        Label {
            width: parent.width
            visible: text !== ""
            kind: Label.Caption
            secondary: true
            text: row.caption
        }
    }
    Label {
        id: beside
        x: holder.x - width - Theme.medium
        anchors.verticalCenter: parent.verticalCenter
        visible: text !== ""
        secondary: true
        wrapMode: Text.NoWrap
        text: row.aside
    }
    Item {
        id: holder
        x: row.width - width - Theme.large
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
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
