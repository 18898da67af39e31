import QtQuick
import Tulvane

// Whether one permission is granted; where it is not, why, and the ways to it.
SettingRow {
    id: row

    property bool granted: false
    property string obstacle: ""
    property string name: "permission"
    property string settingsText: ""
    property string resetText: ""

    signal settingsWanted()
    signal resetWanted()

    caption: granted ? "" : obstacle !== "" ? obstacle
        : resetText === "" ? "" : Words.translate("Use this if Tulvane is already switched on in System Settings but the permission still shows as missing (happens after updates).")

    Column {
        spacing: Theme.small

        Row {
            anchors.right: parent.right
            spacing: 6

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: row.granted ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
                size: 17
                color: row.granted ? Theme.success : Theme.warning
            }
            Label {
                objectName: row.name + ".status"
                color: row.granted ? Theme.success : Theme.warning
                font.weight: Font.Medium
                text: row.granted ? Words.translate("Granted") : Words.translate("Not granted")
                Accessible.name: row.title + ": " + text
            }
        }
        PushButton {
            objectName: row.name + ".settings"
            anchors.right: parent.right
            visible: !row.granted
            text: row.settingsText
            onClicked: row.settingsWanted()
        }
        PushButton {
            objectName: row.name + ".reset"
            anchors.right: parent.right
            visible: !row.granted && row.resetText !== ""
            text: row.resetText
            onClicked: row.resetWanted()
        }
    }
}
