import QtQuick
import Tulvane

// What becomes of what is said: it stays here.
Card {
    id: card

    signal explanationWanted()
    signal hideWanted()

    Item {
        width: parent.width
        height: words.height

        RoundBox {
            id: disc
            width: 36
            height: 36
            radius: 18
            color: Theme.successSoft

            Symbol {
                anchors.centerIn: parent
                name: "lock.shield.fill"
                size: 19
                color: Theme.success
            }
        }
        Column {
            id: words
            x: disc.width + Theme.large
            width: parent.width - x
            spacing: Theme.tiny

            Item {
                width: parent.width
                height: Math.max(heading.height, badge.height)

                Label {
                    id: heading
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, parent.width - badge.width - Theme.medium)
                    kind: Label.Heading
                    text: Words.translate("Everything stays on your Mac")
                }
                Badge {
                    id: badge
                    x: heading.width + Theme.medium
                    anchors.verticalCenter: parent.verticalCenter
                    tone: Badge.Success
                    symbol: "lock.fill"
                    text: Words.translate("Private")
                }
            }
            Label {
                width: parent.width
                secondary: true
                text: Words.translate("Audio is recorded only while the hotkey is active and transcribed locally by NB-Whisper. No account, no cloud, no transcripts on disk.")
            }
            Row {
                topPadding: Theme.tiny
                spacing: Theme.large

                Link {
                    objectName: "home.privacy.howItWorks"
                    text: Words.translate("How it works")
                    onClicked: card.explanationWanted()
                }
                Link {
                    objectName: "home.privacy.hide"
                    Accessible.role: Accessible.Button
                    text: Words.translate("Hide")
                    onClicked: card.hideWanted()
                }
            }
        }
    }
}
