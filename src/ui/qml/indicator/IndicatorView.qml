import QtQuick
import Tulvane

// The indicator: what the program is doing, in a symbol and a few words, with the microphone's level while it
// listens. It is as wide as its words; long ones go over two lines.
Item {
    id: view

    required property HUDModel model

    // The indicator's place within the window, for cutting the window to it.
    readonly property rect outline: Qt.rect(body.x, body.y, body.width, body.height)
    readonly property real outlineRadius: 24

    readonly property bool listening: model.state === HUDModel.Recording
    readonly property color tint: model.state === HUDModel.Error ? Theme.indicatorDanger
        : model.state === HUDModel.Notice || model.state === HUDModel.Idle ? Theme.indicatorSecondaryText : Theme.indicatorAccent
    readonly property real widest: width - 32
    readonly property real padding: 18

    IndicatorBackground {
        anchors.fill: parent
        body: view.outline
        radius: view.outlineRadius
        blended: view.model.blended
        upperColor: Theme.indicatorTop
        lowerColor: Theme.indicatorBottom
        edgeColor: Theme.indicatorEdge
        shadowColor: Theme.indicatorShadow
    }

    Item {
        id: body

        // Even widths keep the middle on a pixel.
        readonly property real wanted: 2 * Math.ceil((content.width + 2 * view.padding) / 2)

        objectName: "indicator.body"
        x: (view.width - width) / 2
        y: view.height - 28 - height
        width: label.text === "" ? height : wanted
        height: Math.max(48, Math.ceil(label.height) + 20)
        clip: true

        Behavior on width {
            enabled: view.model.shown && view.model.blended
            NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic }
        }

        Item {
            id: content
            anchors.centerIn: parent
            width: view.listening ? (time.visible ? time.x + time.width : meter.x + meter.width)
                : label.text === "" ? symbol.width : label.x + Math.ceil(label.contentWidth)
            height: parent.height

            Symbol {
                id: symbol
                objectName: "indicator.symbol"
                anchors.verticalCenter: parent.verticalCenter
                name: view.model.symbol
                size: 20
                color: view.tint

                // A sign of life for what can take some seconds.
                SequentialAnimation on opacity {
                    running: view.model.shown && view.model.state === HUDModel.Transcribing && Look.animated
                    loops: Animation.Infinite
                    onStopped: symbol.opacity = 1
                    NumberAnimation { to: 0.4; duration: 4 * Theme.slow; easing.type: Easing.InOutSine }
                    NumberAnimation { to: 1; duration: 4 * Theme.slow; easing.type: Easing.InOutSine }
                }
            }

            Label {
                id: label

                readonly property real wanted: Math.ceil(natural.advanceWidth) + 1
                readonly property real most: view.widest - 2 * view.padding - x

                objectName: "indicator.label"
                x: symbol.width + 10
                anchors.verticalCenter: parent.verticalCenter
                // Two lines are about as long as each other, and leave room for a long word.
                width: wanted <= most ? wanted : Math.min(most, Math.ceil(0.75 * wanted))
                text: view.model.label
                color: Theme.indicatorText
                font.weight: Font.Medium
                maximumLineCount: 2
                elide: Text.ElideRight
            }

            LevelMeter {
                id: meter
                objectName: "indicator.meter"
                x: label.x + Math.ceil(label.contentWidth) + 14
                anchors.verticalCenter: parent.verticalCenter
                visible: view.listening
                moving: view.model.shown
                tint: view.tint
            }
            Digits {
                id: time
                objectName: "indicator.time"
                x: meter.x + meter.width + 10
                anchors.verticalCenter: parent.verticalCenter
                visible: view.listening && figures !== ""
                figures: view.model.time
                font.weight: view.model.ending ? Font.DemiBold : Font.Normal
                color: view.model.ending ? Theme.indicatorDanger : Theme.indicatorSecondaryText
            }
        }
    }

    // A hidden meter does not move.
    Binding {
        target: meter
        property: "level"
        value: view.model.level
        when: view.listening && view.model.shown
        restoreMode: Binding.RestoreNone
    }

    TextMetrics {
        id: natural
        font: label.font
        text: label.text
    }
}
