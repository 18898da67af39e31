pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// The microphone's level as a row of bars that grow from the middle one outwards.
Row {
    id: meter

    property real level: 0
    property color tint: Theme.accent
    property int bars: 5
    // Whether a change of the level is worth moving for.
    property bool moving: true

    readonly property real barWidth: 4
    readonly property real shortest: 4
    readonly property real growth: 14

    width: 44
    height: 18
    spacing: 3
    leftPadding: (width - bars * barWidth - (bars - 1) * spacing) / 2

    // How high the bar stands at this level. The further from the middle, the later it rises.
    function barHeight(index: int, level: real): real {
        const late = Math.abs(index - (bars - 1) / 2) / bars * 0.6;
        return shortest + growth * Math.max(level - late, 0) / (1 - late);
    }

    Repeater {
        model: meter.bars

        MeterBar {
            required property int index

            objectName: "indicator.bar." + index
            width: meter.barWidth
            height: meter.height
            length: meter.barHeight(index, meter.level)
            tint: meter.tint

            Behavior on length {
                enabled: meter.moving
                NumberAnimation { duration: Theme.beat }
            }
        }
    }
}
