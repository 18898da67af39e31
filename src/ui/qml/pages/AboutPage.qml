import QtQuick
import Tulvane

// What the program is and what it stands on.
ScrollPage {
    id: page

    required property ViewModels models

    widest: 620

    component Feature: Item {
        id: feature

        property string symbol
        property string title
        property string text

        width: parent.width
        implicitHeight: Math.max(44, words.height)

        RoundBox {
            id: ground
            width: 44
            height: 44
            radius: 12
            color: Theme.accentSoft

            Symbol {
                anchors.centerIn: parent
                name: feature.symbol
                size: 22
                color: Theme.accentSoftInk
            }
        }
        Column {
            id: words
            anchors.verticalCenter: parent.verticalCenter
            x: ground.width + Theme.large
            width: parent.width - x
            spacing: 2

            Label {
                width: parent.width
                kind: Label.Heading
                text: feature.title
            }
            BalancedLabel {
                width: parent.width
                secondary: true
                text: feature.text
            }
        }
    }

    Column {
        width: parent.width
        spacing: Theme.small
        topPadding: Theme.large

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            source: "qrc:/icons/com.dunio.Tulvane.svg"
            sourceSize { width: 96; height: 96 }
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: Theme.small
            kind: Label.LargeTitle
            text: Words.translate("Tulvane")
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            secondary: true
            text: page.models.main.version
        }
        BalancedLabel {
            width: parent.width
            topPadding: Theme.small
            horizontalAlignment: Text.AlignHCenter
            text: Words.translate("Private, on-device Norwegian dictation for macOS. Press a hotkey, speak, and the text appears where your cursor is – in any app.")
        }
    }

    Card {
        width: parent.width
        padding: Theme.huge

        Column {
            width: parent.width
            spacing: Theme.huge

            Feature {
                symbol: "lock.shield.fill"
                title: Words.translate("Private by design")
                text: Words.translate("Audio is captured only while the hotkey is active, kept in memory, and transcribed on your Mac.")
            }
            Feature {
                symbol: "bolt.fill"
                title: Words.translate("Fast")
                text: Words.translate("whisper.cpp runs on the Apple Silicon GPU through Metal. A ten-second sentence transcribes in a few seconds.")
            }
            Feature {
                symbol: "character.book.closed.fill"
                title: Words.translate("Norwegian first")
                text: Words.translate("Bokmål, nynorsk and English, with a vocabulary hint for the names and jargon you use.")
            }
        }
    }

    BalancedLabel {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        kind: Label.Caption
        secondary: true
        text: Words.translate("Speech recognition by NB-Whisper (Nasjonalbiblioteket, Apache-2.0) running on whisper.cpp (MIT), Metal-accelerated. Nothing leaves your Mac.")
    }
}
