import QtQuick
import Tulvane

// A setting with a choice among few.
SettingRow {
    id: row

    property var options: []
    property var value
    property string name: ""

    signal picked(var value)

    Picker {
        objectName: "settings." + row.name
        label: row.title
        options: row.options
        value: row.value
        onPicked: value => row.picked(value)
    }
}
