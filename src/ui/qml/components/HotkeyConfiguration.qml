import QtQuick
import Tulvane

// How dictation is started and stopped: the mode, a single key, and a key combination. Stands on a card; `inset`
// keeps it from the card's edges.
Column {
    id: view

    required property HotkeyViewModel model
    property int inset: 0

    width: parent ? parent.width : 0

    component Line: Item {
        height: 2 * Theme.large + 1

        Rectangle {
            y: Theme.large
            width: parent.width
            height: 1
            color: Theme.separator
        }
    }

    Item {
        width: 1
        height: view.inset
    }
    ModeChoice {
        x: view.inset
        width: view.width - 2 * view.inset
        model: view.model
    }
    Line {
        x: view.inset
        width: view.width - 2 * view.inset
    }
    SingleKeyChoice {
        x: view.inset
        width: view.width - 2 * view.inset
        model: view.model
    }
    Line {
        x: view.inset
        width: view.width - 2 * view.inset
    }
    CombinationChoice {
        x: view.inset
        width: view.width - 2 * view.inset
        model: view.model.field
    }
    Item {
        width: 1
        height: view.inset
    }
}
