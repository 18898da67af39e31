pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// Words per day as bars. One stop of the Tab key; within it the arrow keys go from bar to bar, Space and Enter
// select, and Escape gives the selection up.
Item {
    id: chart

    required property WordsChartViewModel model
    property int plotHeight: 190
    /// The bar that Tab leads to.
    property int current: -1
    property int hovered: -1
    property int focused: -1
    readonly property int entry: current >= 0 && current < model.count ? current : model.count - 1
    readonly property int pointed: hovered >= 0 ? hovered : focused
    readonly property var bars: model.bars
    readonly property var ticks: model.ticks
    readonly property real pitch: model.count > 0 ? plot.width / model.count : 0
    readonly property real widestLabel: bars.reduce((most, bar) => Math.max(most, metrics.advanceWidth(bar.label)), 0)
    /// Every so many bars there is room for a label.
    readonly property int stride: Math.max(1, Math.ceil((widestLabel + 14) / Math.max(1, pitch)))

    function moveTo(bar) {
        if (bar >= 0 && bar < places.count)
            places.itemAt(bar).forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: plot.y + plotHeight + 26
    Accessible.role: Accessible.Chart
    Accessible.name: model.label
    Keys.onLeftPressed: moveTo(entry - 1)
    Keys.onRightPressed: moveTo(entry + 1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            moveTo(0);
        else if (event.key === Qt.Key_End)
            moveTo(model.count - 1);
        else if (event.key === Qt.Key_Escape && model.selected >= 0)
            model.clear();
        else
            return;
        event.accepted = true;
    }

    FontMetrics {
        id: metrics
        font.family: Theme.family
        font.pixelSize: Theme.captionSize
        font.weight: Font.DemiBold
    }

    component AxisLabel: Label {
        kind: Label.Caption
        secondary: true
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }

    Repeater {
        model: chart.ticks

        Item {
            id: tick

            required property int index
            required property var modelData

            y: plot.y + plot.height * (1 - modelData.value / chart.model.top)
            width: chart.width

            AxisLabel {
                x: plot.x - width - 10
                anchors.verticalCenter: parent.top
                text: tick.modelData.label
            }
            Rectangle {
                x: plot.x
                width: chart.width - x
                height: 1
                color: tick.index === 0 ? Theme.controlBorder : Theme.separator
            }
        }
    }

    Item {
        id: plot
        x: Math.ceil(metrics.advanceWidth(chart.ticks[chart.ticks.length - 1]?.label ?? "")) + 12
        y: 10
        width: chart.width - x - Theme.medium
        height: chart.plotHeight

        Repeater {
            id: places
            model: chart.model.count

            ChartBar {
                required property int index

                objectName: "statistics.bar." + index
                x: index * chart.pitch
                width: chart.pitch
                height: plot.height
                day: chart.bars[index] ?? null
                share: day ? day.words / chart.model.top : 0
                isSelected: chart.model.selected === index
                focusPolicy: index === chart.entry ? Qt.StrongFocus : Qt.ClickFocus
                onClicked: chart.model.select(index)
                onHoveredChanged: chart.hovered = hovered ? index : chart.hovered === index ? -1 : chart.hovered
                onActiveFocusChanged: if (activeFocus) chart.current = index
                onVisualFocusChanged: chart.focused = visualFocus ? index : chart.focused === index ? -1 : chart.focused
            }
        }
    }

    Repeater {
        model: chart.model.count

        AxisLabel {
            required property int index
            readonly property var day: chart.bars[index] ?? null
            readonly property real middle: plot.x + (index + 0.5) * chart.pitch

            // Counted from today, which always has its label.
            visible: (chart.model.count - 1 - index) % chart.stride === 0
            x: Math.min(middle - width / 2, chart.width - width)
            y: plot.y + plot.height + 7
            text: day?.label ?? ""
            secondary: !(day?.isToday ?? false)
            color: secondary ? Theme.secondaryText : Theme.accent
            font.weight: secondary ? Font.Normal : Font.DemiBold
        }
    }

    ChartBubble {
        readonly property var day: chart.bars[chart.pointed] ?? null
        readonly property real middle: plot.x + (chart.pointed + 0.5) * chart.pitch
        readonly property real barTop: day ? plot.y + plot.height * (1 - day.words / chart.model.top) : 0

        visible: day !== null
        x: Math.max(plot.x, Math.min(chart.width - width, middle - width / 2))
        y: Math.max(0, barTop - height - 6)
        figure: day?.figure ?? ""
        caption: day?.day ?? ""
    }
}
