pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// The sections of a long page, at its side: the one that is being read is marked, and each leads to its own. It stays
// while the page scrolls. One stop of Tab; arrows go from one to the next.
Column {
    id: list

    required property ScrollPage page
    /// The Section items, from the top.
    property list<Item> sections
    property string label
    /// Where the first one stands before anything is scrolled.
    property real start: 0
    /// What was asked for, until the page is scrolled again: the last few stand on one screen.
    property int chosen: -1
    property real chosenAt: -1
    readonly property int current: chosen >= 0 && page.contentY === chosenAt ? chosen
        : currentAt(page.contentY, page.contentHeight, page.height, sections.length)

    function placeOf(section: Item): real {
        return section.mapToItem(page.contentItem, 0, 0).y;
    }
    function currentAt(scrolled: real, length: real, height: real, count: int): int {
        if (length > height && scrolled >= length - height - 1)
            return count - 1;
        let found = 0;
        for (let i = 0; i < count; ++i) {
            if (placeOf(sections[i]) <= scrolled + 80)
                found = i;
        }
        return found;
    }
    function open(index: int) {
        if (index < 0 || index >= sections.length)
            return;
        chosenAt = Math.max(0, Math.min(page.contentHeight - page.height, placeOf(sections[index]) - 20));
        chosen = index;
        page.contentY = chosenAt;
    }
    function choose(index: int) {
        const entry = entries.itemAt(index) as SectionEntry;
        if (entry)
            entry.forceActiveFocus(Qt.TabFocusReason);
        open(index);
    }

    y: Math.max(20, start - page.contentY)
    spacing: 1
    Accessible.role: Accessible.List
    Accessible.name: label

    Repeater {
        id: entries
        model: list.sections.length

        SectionEntry {
            required property int index

            objectName: "section." + index
            width: list.width
            text: (list.sections[index] as Section).title
            selected: index === list.current
            onClicked: list.open(index)
            Keys.onDownPressed: list.choose(index + 1)
            Keys.onUpPressed: list.choose(index - 1)
        }
    }
}
