pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// A short text with numbers that change: every digit has the same width, so that nothing moves when one changes.
// Read aloud as one text.
Row {
    id: line

    property string figures
    readonly property string text: figures
    property color color: Theme.text
    property alias font: metrics.font
    readonly property real widest: widestOf("0123456789", metrics.font)

    function widestOf(digits: string, font: font): real {
        let most = 0;
        for (const digit of digits)
            most = Math.max(most, metrics.advanceWidth(digit));
        return Math.ceil(most);
    }
    function isDigit(sign: string): bool {
        return sign >= "0" && sign <= "9";
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: figures
    Accessible.ignored: figures === "" || !visible

    FontMetrics {
        id: metrics
        font.family: Theme.family
        font.pixelSize: Theme.bodySize
    }
    Repeater {
        model: line.figures.split("")

        Text {
            required property string modelData

            width: line.isDigit(modelData) ? line.widest : implicitWidth
            horizontalAlignment: Text.AlignHCenter
            text: modelData
            font: metrics.font
            color: line.color
            textFormat: Text.PlainText
        }
    }
}
