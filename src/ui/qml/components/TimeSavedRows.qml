import QtQuick
import Tulvane

// What the estimate of the time saved rests on, and the one figure of it that only the user knows.
Column {
    id: rows

    required property StatisticsViewModel statistics

    width: parent ? parent.width : 0

    Item {
        width: parent.width
        height: explanation.height + 2 * 14

        Label {
            id: explanation
            x: Theme.large
            y: 14
            width: parent.width - 2 * Theme.large
            secondary: true
            text: Words.translate("Most people type around 40 words per minute and speak around 150–160, so dictating is roughly 4× faster. The estimate is the time typing the same words would take at your typing speed, minus the time you actually spent speaking.")
        }
        Rectangle {
            x: Theme.large
            y: parent.height - 1
            width: parent.width - 2 * Theme.large
            height: 1
            color: Theme.separator
        }
    }
    Item {
        width: parent.width
        height: stepper.height + 2 * Theme.medium

        Label {
            x: Theme.large
            anchors.verticalCenter: parent.verticalCenter
            width: stepper.x - x - Theme.large
            textFormat: Text.MarkdownText
            text: rows.statistics.typingSpeedLabel
            Accessible.ignored: true
        }
        Stepper {
            id: stepper
            objectName: "statistics.typingSpeed"
            x: parent.width - width - Theme.large
            anchors.verticalCenter: parent.verticalCenter
            // The number stands in the words beside it.
            implicitWidth: 80
            display: ""
            label: rows.statistics.typingSpeedLabel.replace(/\*/g, "")
            Accessible.description: String(value)
            value: rows.statistics.typingSpeed
            from: rows.statistics.slowestTyping
            to: rows.statistics.fastestTyping
            step: rows.statistics.typingStep
            onChanged: value => rows.statistics.typingSpeed = value
        }
    }
}
