pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// The pages, the way back to an unfinished setup, and the version.
Rectangle {
    id: sidebar

    required property MainViewModel model
    required property SetupViewModel setup

    implicitWidth: 216
    color: Theme.sidebar
    Accessible.role: Accessible.PageTabList
    Accessible.name: Words.translate("Pages")

    function choose(index) {
        const entry = pages.itemAt(index) as SidebarEntry;
        if (!entry)
            return;
        entry.forceActiveFocus(Qt.TabFocusReason);
        entry.clicked();
    }

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.border
    }

    Row {
        x: Theme.large + 4
        y: 22
        spacing: 10

        Image {
            source: "qrc:/icons/com.dunio.Tulvane.svg"
            sourceSize { width: 30; height: 30 }
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            kind: Label.Heading
            text: Words.translate("Tulvane")
        }
    }

    Column {
        id: entries
        x: Theme.medium
        y: 72
        width: parent.width - 2 * Theme.medium
        spacing: 2

        Repeater {
            id: pages
            model: sidebar.model.entries

            SidebarEntry {
                required property int index
                required property var modelData

                objectName: "sidebar." + modelData.name
                width: entries.width
                text: modelData.title
                symbol: modelData.symbol
                selected: sidebar.model.selection.page === modelData.page
                count: modelData.page === SettingsSelection.Home ? sidebar.setup.missingEssentials : 0
                Accessible.description: count > 0 ? sidebar.setup.missingText : ""
                onClicked: sidebar.model.selection.page = modelData.page
                Keys.onDownPressed: sidebar.choose(index + 1)
                Keys.onUpPressed: sidebar.choose(index - 1)
            }
        }
    }

    Column {
        x: Theme.medium
        width: parent.width - 2 * Theme.medium
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.medium
        spacing: Theme.medium

        FinishSetupPrompt {
            width: parent.width
            visible: sidebar.setup.missingEssentials > 0
            setup: sidebar.setup
        }
        Label {
            leftPadding: Theme.small
            kind: Label.Caption
            secondary: true
            text: sidebar.model.version
        }
    }
}
