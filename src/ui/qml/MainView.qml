import QtQuick
import Tulvane

// The main window: the sidebar, and the page that it selects. A page is built when it is first shown.
Rectangle {
    id: view

    required property ViewModels models

    color: Theme.window
    focus: true
    Keys.onPressed: event => page.item.scroll(event)

    Connections {
        target: view.models.main.selection
        function onControlWanted(control: string) {
            (page.item as ScrollPage).lead(control);
        }
    }
    WindowKeys {
        commands: view.models.commands
        ofMainWindow: true
    }
    Sidebar {
        id: sidebar
        height: parent.height
        model: view.models.main
        setup: view.models.setup
    }

    Loader {
        id: page

        readonly property int shown: view.models.main.selection.page

        anchors.left: sidebar.right
        anchors.right: parent.right
        height: parent.height
        onShownChanged: open()
        Component.onCompleted: open()

        function fileOf(shown: int): string {
            switch (shown) {
            case SettingsSelection.Models:
                return "ModelsPage";
            case SettingsSelection.History:
                return "HistoryPage";
            case SettingsSelection.Statistics:
                return "StatisticsPage";
            case SettingsSelection.Settings:
                return "PreferencesPage";
            case SettingsSelection.About:
                return "AboutPage";
            default:
                return "HomePage";
            }
        }
        function open() {
            setSource("pages/" + fileOf(shown) + ".qml", { models: view.models });
        }
    }
}
