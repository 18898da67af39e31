import QtQuick
import Tulvane

// What is left to do, and the way out.
Rectangle {
    id: bar

    required property OnboardingViewModel guide

    implicitHeight: Math.max(words.height, finish.height) + 2 * Theme.medium
    color: Theme.sidebar

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.border
    }
    Symbol {
        id: seal
        x: Theme.enormous
        anchors.verticalCenter: parent.verticalCenter
        visible: bar.guide.allDone && bar.guide.next === 0
        name: "checkmark.seal.fill"
        size: 24
        color: Theme.success
    }
    Label {
        id: words
        x: seal.visible ? seal.x + seal.width + Theme.medium : Theme.enormous
        anchors.verticalCenter: parent.verticalCenter
        width: finish.x - x - Theme.huge
        textFormat: Text.StyledText
        text: bar.guide.footer
        Accessible.name: bar.guide.spokenFooter
    }
    PushButton {
        id: finish
        objectName: "onboarding.finish"
        x: parent.width - width - Theme.enormous
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(96, implicitWidth)
        look: bar.guide.allDone ? PushButton.Primary : PushButton.Normal
        text: bar.guide.finishLabel
        onClicked: bar.guide.finish()
    }
}
