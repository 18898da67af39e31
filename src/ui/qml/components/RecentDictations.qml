import QtQuick
import Tulvane

// The newest dictations, and the way to all of them.
Column {
    id: recent

    required property HomeViewModel home

    signal allWanted()

    spacing: Theme.medium

    Item {
        width: parent.width
        height: heading.height + Theme.tiny

        Label {
            id: heading
            x: 2
            y: Theme.tiny
            kind: Label.Heading
            text: Words.translate("Recent dictations")
        }
        Link {
            objectName: "home.viewAll"
            visible: recent.home.recent.count > 0
            anchors.right: parent.right
            anchors.rightMargin: 2
            anchors.verticalCenter: heading.verticalCenter
            text: Words.translate("View all")
            onClicked: recent.allWanted()
        }
    }
    HistoryList {
        place: "home"
        model: recent.home.recent
    }
}
