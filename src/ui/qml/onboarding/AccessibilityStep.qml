import QtQuick
import Tulvane

// Leave to type into other programs.
StepCard {
    id: card

    required property OnboardingModel guide
    readonly property string reason: guide.accessibilityObstacle.reason

    step: guide.steps[1]

    Label {
        width: parent.width
        secondary: true
        text: Words.translate("Lets Tulvane type the transcribed text into whatever app you are using (it presses ⌘V for you).")
    }
    StatusLine {
        width: parent.width
        visible: card.guide.accessibility
        text: Words.translate("Accessibility access granted")
    }
    // Where the desktop itself stands in the way, there is no switch to look for.
    Notice {
        width: parent.width
        visible: !card.guide.accessibility && card.reason !== ""
        text: card.reason
        remedy: card.guide.accessibilityObstacle.remedy
    }
    Label {
        width: parent.width
        visible: !card.guide.accessibility && card.reason === ""
        kind: Label.Caption
        secondary: true
        text: Words.translate("Turn on the switch next to Tulvane. If the switch is already on but this step stays “To do”, the entry belongs to an older build of the app – use “Reset & grant again” and approve the prompt.")
    }
    Flow {
        width: parent.width
        visible: !card.guide.accessibility
        spacing: Theme.small

        PushButton {
            objectName: "onboarding.openAccessibility"
            look: card.reason === "" ? PushButton.Primary : PushButton.Normal
            text: Words.translate("Open Accessibility settings…")
            onClicked: card.guide.act(2)
        }
        PushButton {
            objectName: "onboarding.resetAccessibility"
            look: PushButton.Plain
            text: Words.translate("Already switched on? Reset & grant again")
            onClicked: card.guide.resetAccessibility()
        }
    }
}
