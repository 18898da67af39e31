import QtQuick
import Tulvane

// How far something is, 0 to 1; below 0 it is not known, and the bar wanders (or is half-tinted without
// animations).
ProgressBox {
    id: line

    property string label: ""

    implicitHeight: 6
    radius: 3
    color: Theme.track
    clip: true
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    RoundBox {
        id: done
        x: line.value < 0 && Look.animated ? wander.at * line.width : 0
        width: line.value < 0 ? (Look.animated ? line.width * 0.3 : line.width / 2) : line.width * Math.min(line.value, 1)
        height: parent.height
        radius: 3
        color: Theme.accent
        opacity: line.value < 0 && !Look.animated ? 0.6 : 1
    }

    NumberAnimation {
        id: wander
        property real at: 0
        target: wander
        property: "at"
        from: -0.3
        to: 1
        duration: 1300
        loops: Animation.Infinite
        running: line.value < 0 && line.visible && Look.animated
    }
}
