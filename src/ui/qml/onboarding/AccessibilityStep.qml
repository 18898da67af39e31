import QtQuick
import Tulvane

// Leave to type into other programs.
StepCard {
    id: card

    required property ViewModels models
    readonly property bool granted: models.permissions.accessibility
    readonly property string obstacle: models.permissions.accessibilityObstacle
    readonly property bool asked: models.permissions.accessibilityIsAsked

    step: models.onboarding.steps[OnboardingViewModel.AccessibilityStep - 1]
    next: models.onboarding.next === OnboardingViewModel.AccessibilityStep
    result: granted ? Words.translate("Accessibility access granted") : ""

    BalancedLabel {
        width: parent.width
        secondary: true
        text: Words.translate("Lets Tulvane type the transcribed text into whatever app you are using (it presses ⌘V for you).")
    }
    StatusLine {
        width: parent.width
        visible: card.granted
        text: Words.translate("Accessibility access granted")
    }
    // Where the desktop itself stands in the way, there is no switch to look for.
    Obstacle {
        width: parent.width
        visible: !card.granted && card.obstacle !== ""
        text: card.obstacle
    }
    BalancedLabel {
        width: parent.width
        visible: !card.granted && card.obstacle === ""
        kind: Label.Caption
        secondary: true
        text: Words.translate("Turn on the switch next to Tulvane. If the switch is already on but this step stays “To do”, the entry belongs to an older build of the app – use “Reset & grant again” and approve the prompt.")
    }
    Flow {
        width: parent.width
        visible: !card.granted
        spacing: Theme.small

        PushButton {
            objectName: "onboarding.openAccessibility"
            look: card.next && (card.asked || card.obstacle === "") ? PushButton.Primary : PushButton.Normal
            text: card.asked ? Words.translate("Let Tulvane press keys…") : Words.translate("Open Accessibility settings…")
            onClicked: card.models.onboarding.act(OnboardingViewModel.AccessibilityStep)
        }
        PushButton {
            objectName: "onboarding.resetAccessibility"
            visible: !card.asked
            look: PushButton.Plain
            text: Words.translate("Already switched on? Reset & grant again")
            onClicked: card.models.permissions.resetAccessibility()
        }
    }
}
