import QtQuick
import Tulvane

// Every dictation that is still in memory.
ScrollPage {
    id: page

    required property ViewModels models
    readonly property bool isInFront: Window.active

    title: models.main.titleOf(SettingsSelection.History)
    subtitle: Words.translate("Your most recent transcripts. Kept in memory only – they disappear when the app quits and are never written to disk.")
    onIsInFrontChanged: models.history.refresh()
    Component.onCompleted: models.history.refresh()

    Connections {
        target: page.models.commands
        function onSearchWanted() {
            search.forceActiveFocus(Qt.ShortcutFocusReason);
        }
    }

    SearchField {
        id: search
        objectName: "history.search"
        width: parent.width
        visible: page.models.history.count > 0
        label: Words.translate("Search the history")
    }

    HistoryList {
        place: "history"
        search: search.text
        model: page.models.history
        mostLines: 8
        isTool: true
    }
}
