pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// Whether the hotkey is pressed or held, with each mode's explanation.
Column {
    id: modes

    required property HotkeyViewModel model

    spacing: 2
    Accessible.role: Accessible.Grouping
    Accessible.name: heading.text

    function choose(index) {
        const entry = choices.itemAt(index);
        if (!entry)
            return;
        entry.forceActiveFocus(Qt.TabFocusReason);
        model.mode = model.modes[index].value;
    }

    Label {
        id: heading
        bottomPadding: Theme.tiny
        font.weight: Font.Medium
        text: Words.translate("Hotkey mode")
        Accessible.ignored: true
    }
    Repeater {
        id: choices
        model: modes.model.modes

        Choice {
            required property int index
            required property var modelData

            objectName: "hotkey.mode." + modelData.value
            // The rings stand in line with the heading, the ground of the hovered one around them.
            x: -Theme.small
            width: modes.width + Theme.small
            text: modelData.title
            explanation: modelData.explanation
            chosen: modes.model.mode === modelData.value
            onClicked: modes.model.mode = modelData.value
            Keys.onDownPressed: modes.choose(index + 1)
            Keys.onUpPressed: modes.choose(index - 1)
        }
    }
}
