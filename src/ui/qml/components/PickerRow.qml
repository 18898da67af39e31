import QtQuick
import Tulvane

// A setting with a choice among few.
SettingRow {
    id: row

    required property ChoiceViewModel choice

    title: choice.title

    Picker {
        objectName: "settings." + row.choice.key
        label: row.title
        options: row.choice.options
        value: row.choice.value
        onPicked: value => row.choice.value = value
    }
}
