import QtQuick
import Tulvane

// Every setting, in sections.
ScrollPage {
    id: page

    required property ViewModels models
    readonly property PreferencesViewModel preferences: models.preferences
    readonly property PermissionsViewModel permissions: models.permissions
    readonly property var settings: preferences.settings

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

    Section {
        title: Words.translate("Hotkey")
        caption: Words.translate("How you start and stop dictation.")

        HotkeyConfiguration {
            model: page.models.hotkey
            inset: Theme.large
        }
    }

    Section {
        title: Words.translate("Speech")

        PickerRow {
            name: "language"
            title: Words.translate("Language")
            caption: Words.translate("NB-Whisper is trained on Norwegian, but handles English too.")
            options: page.preferences.languages
            value: page.preferences.language
            onPicked: value => page.preferences.language = value
        }
        SettingRow {
            last: true
            title: Words.translate("Stop automatically")
            caption: Words.translate("Longest single dictation before recording stops by itself.")

            Stepper {
                objectName: "settings.maxRecordingSeconds"
                label: Words.translate("Stop automatically")
                from: 10
                to: 1800
                step: 10
                value: page.settings.maxRecordingSeconds
                display: Words.translate("%1 s").arg(value)
                onChanged: value => page.settings.maxRecordingSeconds = value
            }
        }
    }

    Section {
        title: Words.translate("Feedback")

        SwitchRow {
            name: "playSounds"
            title: Words.translate("Sounds")
            caption: Words.translate("Play a tone when recording starts and stops.")
            on: page.settings.playSounds
            onSwitched: on => page.settings.playSounds = on
        }
        SwitchRow {
            name: "showHUD"
            last: true
            title: Words.translate("On-screen indicator")
            caption: Words.translate("Floating pill at the bottom of the screen while you dictate.")
            on: page.settings.showHUD
            onSwitched: on => page.settings.showHUD = on
        }
    }

    Section {
        title: Words.translate("Text")

        PickerRow {
            name: "insertionMethod"
            title: Words.translate("Insert text by")
            options: page.preferences.insertionMethods
            value: page.preferences.insertionMethod
            onPicked: value => page.preferences.insertionMethod = value
        }
        SwitchRow {
            name: "restoreClipboard"
            enabled: page.preferences.pastes
            title: Words.translate("Restore clipboard")
            caption: Words.translate("Put whatever you had copied back after pasting.")
            on: page.settings.restoreClipboard
            onSwitched: on => page.settings.restoreClipboard = on
        }
        SwitchRow {
            name: "autoCapitalize"
            title: Words.translate("Capitalise the first letter")
            caption: Words.translate("The model usually does this itself; off keeps its output as is.")
            on: page.settings.autoCapitalize
            onSwitched: on => page.settings.autoCapitalize = on
        }
        SwitchRow {
            name: "appendTrailingSpace"
            last: true
            title: Words.translate("Add a space after the text")
            on: page.settings.appendTrailingSpace
            onSwitched: on => page.settings.appendTrailingSpace = on
        }
    }

    Section {
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
                label: Words.translate("Vocabulary")
                placeholder: Words.translate("Nordlys Energi, Ingrid Haugland, Q3")
                value: page.settings.vocabularyPrompt
                onEdited: text => page.settings.vocabularyPrompt = text
            }
        }
    }

    Section {
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
            name: "settings.accessibility"
            title: Words.translate("Accessibility")
            granted: page.permissions.accessibility
            obstacle: page.permissions.accessibilityObstacle
            settingsText: Words.translate("Open Accessibility settings…")
            resetText: Words.translate("Already switched on? Reset & grant again")
            onSettingsWanted: page.permissions.openAccessibilitySettings()
            onResetWanted: page.permissions.resetAccessibility()
        }
        SettingRow {
            last: true
            title: Words.translate("Setup guide")
            caption: Words.translate("Walks through permissions, model download and hotkey again.")

            PushButton {
                objectName: "settings.setupGuide"
                text: Words.translate("Setup guide")
                onClicked: page.preferences.showSetupGuide()
            }
        }
    }

    Section {
        title: Words.translate("Language & appearance")

        PickerRow {
            name: "appearance"
            title: Words.translate("Appearance")
            caption: Words.translate("Light, dark, or whatever the Mac is using.")
            options: page.preferences.appearances
            value: page.preferences.appearance
            onPicked: value => page.preferences.appearance = value
        }
        PickerRow {
            name: "appLanguage"
            title: Words.translate("App language")
            caption: Words.translate("Menus, settings and messages. The app restarts when you change this.")
            options: page.preferences.appLanguages
            value: page.preferences.appLanguage
            onPicked: value => page.preferences.appLanguage = value
        }
        SwitchRow {
            name: "showInDock"
            title: Words.translate("Show in Dock")
            caption: on ? Words.translate("Behaves like a normal app with a Dock icon and app menu. Clicking the Dock icon opens this window.")
                : Words.translate("Menu-bar only. Use the microphone icon in the menu bar to reach this window and quit.")
            on: page.settings.showInDock
            onSwitched: on => page.settings.showInDock = on
        }
        SwitchRow {
            name: "launchAtLogin"
            last: true
            title: Words.translate("Launch at login")
            caption: page.preferences.launchAtLoginFailure
            on: page.preferences.launchAtLogin
            onSwitched: on => page.preferences.launchAtLogin = on
        }
    }
}
