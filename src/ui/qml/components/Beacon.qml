import QtQuick
import Tulvane

// Lights what a link has led to, for as long as it takes to see it.
RoundBox {
    id: beacon

    property Item lit: null

    function show(item: Item) {
        lit = item;
        place();
        opacity = 1;
        fade.restart();
    }
    function place() {
        const corner = lit.mapToItem(parent, 0, 0);
        x = corner.x - 6;
        y = corner.y - 6;
        width = lit.width + 12;
        height = lit.height + 12;
    }

    objectName: "beacon"
    visible: opacity > 0
    opacity: 0
    z: -1
    radius: Theme.controlRadius + 6
    color: Theme.accentSoft
    border.width: 2
    border.color: Theme.accent

    SequentialAnimation {
        id: fade
        PauseAnimation { duration: 1400 }
        NumberAnimation {
            target: beacon
            property: "opacity"
            to: 0
            duration: 2 * Theme.slow
        }
    }
}
