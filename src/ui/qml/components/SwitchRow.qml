import QtQuick
import Tulvane

// A setting that is on or off. `on` is what is stored; the user's change is told by `switched`.
SettingRow {
    id: row

    property bool on: false
    property string name: ""

    signal switched(bool on)

    Toggle {
        objectName: "settings." + row.name
        text: row.title
        checked: row.on
        Accessible.description: row.caption
        onToggled: {
            const wanted = checked;
            // What is stored decides what is shown.
            checked = Qt.binding(() => row.on);
            row.switched(wanted);
        }
    }
}
