pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// Figures side by side, all of one height; in as many rows as it takes for none to be narrower than `narrowest`.
Grid {
    id: grid

    /// Objects with `title`, `value`, `subtitle` and `symbol`.
    property var cards: []
    property int narrowest: 160
    readonly property int fitting: Math.floor((width + spacing) / (narrowest + spacing))
    readonly property real tallest: {
        let most = 0;
        for (let i = 0; i < places.count; ++i)
            most = Math.max(most, places.itemAt(i)?.implicitHeight ?? 0);
        return most;
    }

    // Four cards stand in one row or in two pairs, never three and one.
    columns: fitting >= cards.length ? cards.length : cards.length % 2 === 0 ? Math.min(2, fitting) : fitting
    spacing: Theme.medium

    Repeater {
        id: places
        model: grid.cards.length

        StatCard {
            required property int index
            readonly property var figures: grid.cards[index] ?? {}

            width: (grid.width - (grid.columns - 1) * grid.spacing) / grid.columns
            height: grid.tallest
            title: figures.title ?? ""
            value: figures.value ?? ""
            subtitle: figures.subtitle ?? ""
            symbol: figures.symbol ?? ""
        }
    }
}
