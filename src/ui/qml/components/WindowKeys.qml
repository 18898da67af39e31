pragma ComponentBehavior: Bound

import QtQuick
import QtQml.Models
import Tulvane

// The keys of the window that it lies in: what every window takes, and in the main window its own as well.
Item {
    id: keys

    required property WindowCommands commands
    property bool ofMainWindow: false

    Instantiator {
        model: keys.ofMainWindow ? keys.commands.ofMainWindow : keys.commands.everywhere

        delegate: Shortcut {
            required property var modelData

            sequence: modelData.sequence
            onActivated: keys.commands.run(modelData.index)
        }
    }
    Connections {
        target: keys.commands
        function onCloseWanted() {
            if (keys.Window.active)
                keys.Window.window.close();
        }
    }
}
