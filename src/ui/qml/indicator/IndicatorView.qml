import QtQuick
import Tulvane

// The pill: what the program is doing, in a symbol and a few words, with the microphone's level while it
// listens. It is as wide as its words; long ones go over two lines.
Item {
    id: view

    required property HUDModel model

    // The pill's place within the window, for cutting the window to it.
    readonly property rect outline: Qt.rect(pill.x, pill.y, pill.width, pill.height)
    readonly property real outlineRadius: 24

    readonly property bool listening: model.phase === "recording"
    readonly property color tint: model.phase === "error" ? Theme.pillDanger
        : model.phase === "notice" || model.phase === "idle" ? Theme.pillSecondaryText : Theme.pillAccent
    readonly property real widest: width - 32
    readonly property real padding: 18

    IndicatorBackground {
        anchors.fill: parent
        body: view.outline
        radius: view.outlineRadius
        blended: view.model.blended
        upperColor: Theme.pillTop
        lowerColor: Theme.pillBottom
        edgeColor: Theme.pillEdge
        shadowColor: Theme.pillShadow
    }

    Item {
        id: pill

        // Even widths keep the middle on a pixel.
        readonly property real wanted: 2 * Math.ceil((content.width + 2 * view.padding) / 2)

        objectName: "indicator.pill"
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
            width: view.listening ? meter.x + meter.width
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
                    running: view.model.shown && view.model.phase === "transcribing" && Look.animated
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
                color: Theme.pillText
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
        }
    }

    // What nobody sees stands still.
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
