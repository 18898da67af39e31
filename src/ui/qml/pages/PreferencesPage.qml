import QtQuick
import Tulvane

// Every setting, in sections.
ScrollPage {
    id: page

    required property ViewModels models
    readonly property PreferencesViewModel preferences: models.preferences
    readonly property PermissionsViewModel permissions: models.permissions
    readonly property var settings: preferences.settings
    readonly property var rows: preferences.rows

    // Where there is room for it beside the rows.
    side: width >= 780 ? 150 : 0
    title: Words.translate("Settings")
    subtitle: Words.translate("Hotkey, speech, text insertion and how the app shows up on your Mac.")

    Note {
        visible: text !== ""
        width: parent.width
        tone: Badge.Danger
        text: page.preferences.storageFailure
    }

    PermissionHold {
        watch: page.models.watch
    }
    SectionList {
        parent: page
        x: Theme.huge
        width: 150
        start: page.column.y
        visible: page.side > 0
        page: page
        label: Words.translate("Sections")
        sections: [hotkey, speech, feedback, textSection, vocabularySection, permissionsSection, lookSection]
    }
    // Other programs write there too.
    Timer {
        running: page.Window.active
        repeat: true
        triggeredOnStart: true
        interval: 3000
        onTriggered: page.preferences.refresh()
    }

    Section {
        id: hotkey
        title: Words.translate("Hotkey")
        caption: Words.translate("How you start and stop dictation.")

        HotkeyConfiguration {
            model: page.models.hotkey
            inset: Theme.large
        }
    }

    Section {
        id: speech
        title: Words.translate("Speech")

        PickerRow {
            choice: page.preferences.language
            caption: Words.translate("NB-Whisper is trained on Norwegian, but handles English too.")
        }
        SettingRow {
            last: true
            title: page.rows.maxRecordingSeconds.title
            aside: page.preferences.inMinutes(page.settings.maxRecordingSeconds)
            caption: Words.translate("Longest single dictation before recording stops by itself.")

            Stepper {
                objectName: "settings.maxRecordingSeconds"
                label: page.rows.maxRecordingSeconds.title
                from: page.rows.maxRecordingSeconds.from
                to: page.rows.maxRecordingSeconds.to
                step: page.rows.maxRecordingSeconds.step
                value: page.settings.maxRecordingSeconds
                display: Words.translate("%1 s").arg(value)
                onChanged: value => page.settings.maxRecordingSeconds = value
            }
        }
    }

    Section {
        id: feedback
        title: Words.translate("Feedback")

        SwitchRow {
            name: "playSounds"
            title: page.rows.playSounds.title
            caption: Words.translate("Play a tone when recording starts and stops.")
            on: page.settings.playSounds
            onSwitched: on => page.settings.playSounds = on
        }
        SwitchRow {
            name: "showHUD"
            last: true
            title: page.rows.showHUD.title
            caption: Words.translate("Floating pill at the bottom of the screen while you dictate.")
            on: page.settings.showHUD
            onSwitched: on => page.settings.showHUD = on
        }
    }

    Section {
        id: textSection
        title: Words.translate("Text")

        PickerRow {
            choice: page.preferences.insertionMethod
        }
        SwitchRow {
            name: "restoreClipboard"
            enabled: page.preferences.pastes
            title: page.rows.restoreClipboard.title
            caption: Words.translate("Put whatever you had copied back after pasting.")
            on: page.settings.restoreClipboard
            onSwitched: on => page.settings.restoreClipboard = on
        }
        SwitchRow {
            name: "autoCapitalize"
            title: page.rows.autoCapitalize.title
            caption: Words.translate("The model usually does this itself; off keeps its output as is.")
            on: page.settings.autoCapitalize
            onSwitched: on => page.settings.autoCapitalize = on
        }
        SwitchRow {
            name: "appendTrailingSpace"
            last: true
            title: page.rows.appendTrailingSpace.title
            on: page.settings.appendTrailingSpace
            onSwitched: on => page.settings.appendTrailingSpace = on
        }
    }

    Section {
        id: vocabularySection
        title: Words.translate("Vocabulary")
        caption: Words.translate("Names, products or jargon you use often. Given to the model as context so it spells them right. Keep it short.")

        Item {
            width: parent.width
            height: vocabulary.height + 2 * Theme.medium

            TextBox {
                id: vocabulary
                objectName: "settings.vocabularyPrompt"
                x: Theme.medium
                y: Theme.medium
                width: parent.width - 2 * Theme.medium
                label: page.rows.vocabularyPrompt.title
                placeholder: Words.translate("Nordlys Energi, Ingrid Haugland, Q3")
                value: page.settings.vocabularyPrompt
                onEdited: text => page.settings.vocabularyPrompt = text
            }
        }
    }

    Section {
        id: permissionsSection
        title: Words.translate("Permissions")

        PermissionRow {
            name: "settings.microphone"
            title: Words.translate("Microphone")
            granted: page.permissions.microphone
            obstacle: page.permissions.microphoneObstacle
            settingsText: Words.translate("Open Microphone settings…")
            onSettingsWanted: page.permissions.openMicrophoneSettings()
        }
        PermissionRow {
            readonly property bool asked: page.permissions.accessibilityIsAsked

            name: "settings.accessibility"
            title: Words.translate("Accessibility")
            granted: page.permissions.accessibility
            obstacle: page.permissions.accessibilityObstacle
            settingsText: asked ? Words.translate("Let Tulvane press keys…") : Words.translate("Open Accessibility settings…")
            resetText: asked ? "" : Words.translate("Already switched on? Reset & grant again")
            onSettingsWanted: asked ? page.permissions.askForAccessibility() : page.permissions.openAccessibilitySettings()
            onResetWanted: page.permissions.resetAccessibility()
        }
        SettingRow {
            last: true
            title: Words.translate("Setup guide")
            caption: Words.translate("Walks through permissions, model download and hotkey again.")

            PushButton {
                objectName: "settings.setupGuide"
                text: Words.translate("Open")
                Accessible.name: Words.translate("Setup guide")
                onClicked: page.preferences.showSetupGuide()
            }
        }
    }

    Section {
        id: lookSection
        title: Words.translate("Language & appearance")

        PickerRow {
            choice: page.preferences.appearance
            caption: Words.translate("Light, dark, or whatever the Mac is using.")
        }
        PickerRow {
            choice: page.preferences.appLanguage
            caption: Words.translate("Menus, settings and messages. The app restarts when you change this.")
        }
        SwitchRow {
            name: "showInDock"
            title: page.rows.showInDock.title
            caption: on ? Words.translate("Behaves like a normal app with a Dock icon and app menu. Clicking the Dock icon opens this window.")
                : page.preferences.hasStatusIcon ? Words.translate("Menu-bar only. Use the microphone icon in the menu bar to reach this window and quit.")
                : Words.translate("This desktop shows no icon for Tulvane. Start it again to reach this window; you can quit below.")
            on: page.settings.showInDock
            onSwitched: on => page.settings.showInDock = on
        }
        SwitchRow {
            name: "launchAtLogin"
            title: Words.translate("Launch at login")
            caption: page.preferences.launchAtLoginFailure
            on: page.preferences.launchAtLogin
            onSwitched: on => page.preferences.launchAtLogin = on
        }
        SettingRow {
            last: true
            title: Words.translate("Quit Tulvane")
            caption: Words.translate("Until you start it again, the hotkey does nothing.")

            PushButton {
                objectName: "settings.quit"
                text: Words.translate("Quit")
                Accessible.name: Words.translate("Quit Tulvane")
                onClicked: page.preferences.quit()
            }
        }
    }
}
