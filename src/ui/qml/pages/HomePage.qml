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
    /// Nothing is left to set up or to try: what was dictated comes first.
    readonly property bool isSettled: models.setup.doneCount === models.setup.items.length

    function open(place: int) {
        models.main.selection.page = place;
    }
    function leadTo(place: int, control: string) {
        models.main.selection.lead(place, control);
    }

    title: home.greeting
    onIsInFrontChanged: home.refresh()
    onShownAsChanged: home.refresh()
    Component.onCompleted: home.refresh()

    // The hour goes on while the window stays in front.
    Timer {
        running: page.isInFront
        repeat: true
        interval: 20000
        onTriggered: page.home.followClock()
    }
    RecentDictations {
        parent: page.isSettled ? above : below
        width: parent.width
        home: page.home
        onAllWanted: page.open(SettingsSelection.History)
    }

    StatusCard {
        width: parent.width
        model: page.home
        microphone: page.models.microphone
        onChooseHotkeyWanted: page.leadTo(SettingsSelection.Settings, "hotkey.combination")
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
            onClicked: page.leadTo(SettingsSelection.Settings, page.notices.brokenControl)
        }
    }

    Item {
        id: above
        width: parent.width
        height: childrenRect.height
        visible: page.isSettled
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
        id: below
        width: parent.width
        height: childrenRect.height
        visible: !page.isSettled
    }
}
