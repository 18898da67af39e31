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
    /// Under each day a heading, and beside each row what can be done with it.
    property bool isTool: false
    /// Only what has these words, in this order, is shown.
    property string search: ""
    readonly property bool isSearched: search.trim() !== ""

    readonly property int shownCount: countShown(entries.count, search)

    function countShown(count: int, words: string): int {
        let shown = 0;
        for (let i = 0; i < count; ++i) {
            const row = entries.itemAt(i) as HistoryRow;
            if (row && (words.trim() === "" || isFound(row.transcript)))
                shown += 1;
        }
        return shown;
    }

    /// The day of a row, where no row above it that is shown is of the same day.
    function headingOf(index: int, day: string, count: int, words: string): string {
        for (let i = index - 1; i >= 0; --i) {
            const row = entries.itemAt(i) as HistoryRow;
            if (row && (words.trim() === "" || isFound(row.transcript)))
                return row.day === day ? "" : day;
        }
        return day;
    }
    function isFound(text: string): bool {
        return text.toLowerCase().includes(search.trim().toLowerCase());
    }

    width: parent.width
    height: shownCount > 0 ? rows.height : nothing.height + 2 * Theme.enormous
    radius: Theme.cardRadius
    color: Theme.card
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.List
    Accessible.name: Words.translate("Recent dictations")

    EmptyState {
        id: nothing
        visible: list.shownCount === 0
        y: Theme.enormous
        x: Theme.large
        width: parent.width - 2 * Theme.large
        symbol: list.isSearched ? "magnifyingglass" : "clock.arrow.circlepath"
        title: list.isSearched ? Words.translate("Nothing found") : Words.translate("No dictations yet")
        text: list.isSearched ? Words.translate("No dictation in memory has these words.") : Words.translate("Press the hotkey, say something, and your transcripts show up here.")
    }
    Column {
        id: rows
        width: parent.width

        Repeater {
            id: entries
            model: list.model

            HistoryRow {
                visible: !list.isSearched || list.isFound(transcript)
                width: rows.width
                place: list.place
                mostLines: list.mostLines
                last: index === list.model.count - 1
                isTool: list.isTool
                heading: list.isTool ? list.headingOf(index, day, entries.count, list.search) : ""
                onCopyWanted: list.model.copy(index)
                onInsertWanted: list.model.insert(index)
                onCorrected: text => list.model.correct(index, text)
            }
        }
    }
}
