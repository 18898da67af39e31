import QtQuick
import Tulvane

// Keeps the permissions' marks live while what it stands in can be seen.
Item {
    id: hold

    required property PermissionWatch watch
    readonly property bool shown: visible && Window.visibility !== Window.Hidden && Window.visibility !== Window.Minimized
    property bool held: false

    function follow(wanted) {
        if (held === wanted)
            return;
        held = wanted;
        if (wanted)
            watch.hold();
        else
            watch.release();
    }

    onShownChanged: follow(shown)
    Component.onCompleted: follow(shown)
    Component.onDestruction: follow(false)
}
