import QtQuick
import Tulvane

// A setting that is on or off. `on` is what is stored; `switched` reports the user's change.
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
        // A screen reader sets `checked` itself and toggles nothing; what is stored decides what is shown.
        onCheckedChanged: {
            if (checked === row.on)
                return;
            if (enabled)
                row.switched(checked);
            checked = Qt.binding(() => row.on);
        }
    }
}
