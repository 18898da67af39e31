import QtQuick
import Tulvane

// A text of a few lines whose last one is never a word alone: centred lines are about as long as each other, others
// leave a fair rest.
Label {
    id: label

    readonly property bool centered: horizontalAlignment === Text.AlignHCenter
    // Of the width, what the words do without.
    readonly property real spare: {
        const all = natural.advanceWidth;
        if (width <= 0 || all <= width)
            return 0;
        // A line ends with its last whole word, so it is never quite full.
        const full = 0.95 * width;
        const lines = Math.ceil(all / full);
        if (centered)
            return Math.max(0, width - 1.14 * all / lines);
        return all - (lines - 1) * full < 0.3 * width ? 0.3 * width / lines : 0;
    }

    leftPadding: centered ? Math.round(spare / 2) : 0
    rightPadding: Math.round(spare) - leftPadding

    TextMetrics {
        id: natural
        font: label.font
        text: label.text
    }
}
