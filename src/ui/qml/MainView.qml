import QtQuick
import Tulvane

// The main window: the sidebar, and the page that it selects. A page is built when it is first shown.
Rectangle {
    id: view

    required property ViewModels models

    color: Theme.window

    Sidebar {
        id: sidebar
        height: parent.height
        model: view.models.main
        setup: view.models.setup
    }

    Loader {
        id: page

        readonly property string name: view.models.main.selection.page

        anchors.left: sidebar.right
        anchors.right: parent.right
        height: parent.height
        onNameChanged: open()
        Component.onCompleted: open()

        function open() {
            const files = {
                home: "HomePage", models: "ModelsPage", history: "HistoryPage",
                statistics: "StatisticsPage", settings: "PreferencesPage", about: "AboutPage"
            };
            setSource("pages/" + files[name] + ".qml", { models: view.models });
        }
    }
}
