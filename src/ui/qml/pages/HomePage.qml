import QtQuick
import Tulvane

// How things stand, how to start, and what has come of it so far.
ScrollPage {
    id: page

    required property ViewModels models
    readonly property HomeViewModel home: models.home
    readonly property HomeNotices notices: models.notices
    readonly property bool isInFront: Window.active
    readonly property int shownAs: Window.visibility

    function open(place: int) {
        models.main.selection.page = place;
    }

    title: home.greeting
    onIsInFrontChanged: home.refresh()
    onShownAsChanged: home.refresh()
    Component.onCompleted: home.refresh()

    StatusCard {
        width: parent.width
        model: page.home
        onChooseHotkeyWanted: page.open(SettingsSelection.Settings)
    }

    NoticeBar {
        objectName: "home.settingsTrouble"
        visible: page.notices.settingsTrouble !== ""
        tone: NoticeBar.Danger
        title: Words.translate("The settings were not read as they were stored")
        text: page.notices.settingsTrouble
    }
    NoticeBar {
        visible: page.notices.canRetry
        tone: NoticeBar.Danger
        title: Words.translate("The last dictation could not be transcribed")
        text: page.notices.failure

        PushButton {
            objectName: "home.retry"
            look: PushButton.Primary
            symbol: "arrow.clockwise"
            text: Words.translate("Try again")
            onClicked: page.notices.retry()
        }
    }
    NoticeBar {
        visible: page.notices.isTextLeft
        tone: NoticeBar.Info
        symbol: "doc.on.doc"
        title: Words.translate("The last text was not inserted")
        text: Words.translate("It was put on the clipboard: paste it where you want it.")

        PushButton {
            objectName: "home.notice.copy"
            text: page.notices.copyLabel
            onClicked: page.notices.copyLastText()
        }
        PushButton {
            objectName: "home.notice.hide"
            look: PushButton.Plain
            text: Words.translate("Hide")
            onClicked: page.notices.hideTextLeft()
        }
    }
    NoticeBar {
        objectName: "home.clipboardLost"
        visible: page.notices.isClipboardLost
        tone: NoticeBar.Info
        symbol: "doc.on.doc"
        title: Words.translate("A part of what you had copied is lost")
        text: Words.translate("The program that you copied it in did not hand it over in time. Copy it again.")

        PushButton {
            look: PushButton.Plain
            text: Words.translate("Hide")
            onClicked: page.notices.hideTextLeft()
        }
    }
    NoticeBar {
        objectName: "home.cardFailed"
        visible: page.notices.hasCardFailed
        tone: NoticeBar.Info
        title: Words.translate("The graphics card failed")
        text: Words.translate("Your words are recognised on the processor now, which takes longer. The card is tried again at the next start.")

        PushButton {
            objectName: "home.cardFailed.hide"
            look: PushButton.Plain
            text: Words.translate("Hide")
            onClicked: page.notices.hideCardFailed()
        }
    }
    NoticeBar {
        visible: page.notices.brokenHotkey !== ""
        title: page.notices.brokenHotkey
        text: page.notices.brokenHotkeyReason

        PushButton {
            objectName: "home.brokenHotkey"
            text: Words.translate("Settings")
            onClicked: page.open(SettingsSelection.Settings)
        }
    }

    StatCards {
        width: parent.width
        cards: page.home.cards
    }

    SetupChecklist {
        objectName: "home.setup"
        visible: page.home.showsSetup
        width: parent.width
        setup: page.models.setup
    }
    PermissionHold {
        watch: page.models.watch
    }

    PrivacyCard {
        objectName: "home.privacy"
        visible: page.home.showsPrivacy
        width: parent.width
        onExplanationWanted: page.open(SettingsSelection.About)
        onHideWanted: page.home.hidePrivacy()
    }

    Item {
        width: parent.width
        height: heading.height + Theme.small

        Label {
            id: heading
            x: 2
            y: Theme.small
            kind: Label.Heading
            text: Words.translate("Recent dictations")
        }
        Link {
            objectName: "home.viewAll"
            visible: page.home.recent.count > 0
            anchors.right: parent.right
            anchors.rightMargin: 2
            anchors.verticalCenter: heading.verticalCenter
            text: Words.translate("View all")
            onClicked: page.open(SettingsSelection.History)
        }
    }
    HistoryList {
        place: "home"
        model: page.home.recent
    }
}
