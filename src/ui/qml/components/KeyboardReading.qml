import QtQuick
import Tulvane

// The user's leave to read the keyboard for a single key, with what it means.
Item {
    id: reading

    required property HotkeyViewModel model

    width: parent ? parent.width : 0
    height: Math.max(words.height, leave.height)

    Column {
        id: words
        anchors.verticalCenter: parent.verticalCenter
        width: leave.x - Theme.large
        spacing: 2

        Label {
            width: parent.width
            font.weight: Font.Medium
            text: leave.text
        }
        Label {
            width: parent.width
            kind: Label.Caption
            secondary: true
            text: reading.model.whatReadingMeans
        }
    }
    Toggle {
        id: leave
        objectName: "hotkey.readKeyboard"
        x: parent.width - width
        anchors.verticalCenter: parent.verticalCenter
        text: Words.translate("Let Tulvane read the keyboard")
        checked: reading.model.mayRead
        Accessible.description: reading.model.whatReadingMeans
        Accessible.ignored: !visible
        // A screen reader sets `checked` itself and toggles nothing; what is stored decides what is shown.
        onCheckedChanged: {
            if (checked === reading.model.mayRead)
                return;
            reading.model.mayRead = checked;
            checked = Qt.binding(() => reading.model.mayRead);
        }
    }
}
