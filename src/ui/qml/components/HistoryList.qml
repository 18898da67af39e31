pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// Dictations on one card, newest first; without any, what will come there.
RoundBox {
    id: list

    required property HistoryViewModel model
    /// Before the name of each control, as in "home.copy.0".
    property string place
    property int mostLines: 3

    width: parent.width
    height: model.count > 0 ? rows.height : nothing.height + 2 * Theme.enormous
    radius: Theme.cardRadius
    color: Theme.card
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.List
    Accessible.name: Words.translate("Recent dictations")

    EmptyState {
        id: nothing
        visible: list.model.count === 0
        y: Theme.enormous
        x: Theme.large
        width: parent.width - 2 * Theme.large
        symbol: "clock.arrow.circlepath"
        title: Words.translate("No dictations yet")
        text: Words.translate("Press the hotkey, say something, and your transcripts show up here.")
    }
    Column {
        id: rows
        width: parent.width

        Repeater {
            model: list.model

            HistoryRow {
                width: rows.width
                place: list.place
                mostLines: list.mostLines
                last: index === list.model.count - 1
                onCopyWanted: list.model.copy(index)
            }
        }
    }
}
