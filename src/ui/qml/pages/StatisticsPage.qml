pragma ComponentBehavior: Bound

import QtQuick
import Tulvane

// What the dictations come to: figures of a period, the days one by one, and what the estimates rest on.
ScrollPage {
    id: page

    required property ViewModels models
    readonly property StatisticsViewModel statistics: models.statistics
    readonly property bool isInFront: Window.active

    title: models.main.titleOf(SettingsSelection.Statistics)
    subtitle: Words.translate("How much you dictate, how fast you speak, and the time it saves you versus typing.")
    onIsInFrontChanged: statistics.refresh()
    Component.onCompleted: statistics.startOver()

    corner: Row {
        visible: !page.statistics.isEmpty
        // The subtitle has the whole width where this is not to be seen.
        width: visible ? implicitWidth : 0
        spacing: Theme.small

        Label {
            anchors.verticalCenter: parent.verticalCenter
            secondary: true
            text: Words.translate("Period")
            Accessible.ignored: true
        }
        Picker {
            objectName: "statistics.period"
            label: Words.translate("Period")
            options: page.statistics.periods
            value: page.statistics.period
            onPicked: value => page.statistics.period = value
        }
    }

    EmptyState {
        visible: page.statistics.isEmpty
        width: parent.width
        topPadding: Math.max(Theme.huge, (page.height - 420) / 2)
        symbol: "chart.bar.xaxis"
        title: Words.translate("No dictations yet")
        text: Words.translate("Press the hotkey, say something, and your first numbers show up here.")
    }

    StatCards {
        visible: !page.statistics.isEmpty
        width: parent.width
        cards: page.statistics.cards
    }

    Card {
        visible: !page.statistics.isEmpty
        width: parent.width

        Column {
            width: parent.width
            spacing: Theme.small

            Item {
                width: parent.width
                height: chartTitle.height

                Label {
                    id: chartTitle
                    kind: Label.Heading
                    text: Words.translate("Words per day")
                }
                Label {
                    anchors.right: parent.right
                    anchors.baseline: chartTitle.baseline
                    kind: Label.Caption
                    secondary: true
                    text: page.statistics.chart.caption
                }
            }
            WordsChart {
                width: parent.width
                model: page.statistics.chart
            }
            Rectangle {
                width: parent.width
                height: 1
                color: Theme.separator
            }
            ChartSelection {
                width: parent.width
                model: page.statistics.chart
            }
        }
    }

    Section {
        visible: !page.statistics.isEmpty
        title: Words.translate("Details")

        Repeater {
            id: details
            model: page.statistics.details

            SettingRow {
                id: figure

                required property int index
                required property var modelData

                title: modelData.label
                last: index === details.count - 1

                Label { text: figure.modelData.value }
            }
        }
    }

    Section {
        visible: !page.statistics.isEmpty
        title: Words.translate("How “time saved” is estimated")

        TimeSavedRows { statistics: page.statistics }
    }

    Item {
        visible: !page.statistics.isEmpty
        width: parent.width
        height: Math.max(note.height, reset.height)

        Symbol {
            id: lock
            anchors.verticalCenter: parent.verticalCenter
            x: 2
            name: "lock.fill"
            size: 15
            color: Theme.secondaryText
        }
        Label {
            id: note
            x: lock.x + lock.width + Theme.small
            anchors.verticalCenter: parent.verticalCenter
            width: reset.x - x - Theme.large
            kind: Label.Caption
            secondary: true
            text: Words.translate("Only counts are saved on this Mac – never the text you dictate.")
        }
        PushButton {
            id: reset
            objectName: "statistics.reset"
            anchors.right: parent.right
            text: Words.translate("Reset statistics…")
            onClicked: question.open()
        }
    }

    ConfirmDialog {
        id: question
        title: Words.translate("Reset all statistics?")
        message: Words.translate("All counters are deleted. Transcripts are never stored, so nothing else is affected.")
        action: Words.translate("Reset")
        onConfirmed: page.statistics.reset()
    }
}
