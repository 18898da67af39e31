import QtQuick

// Something that is pressed by mouse, keyboard or screen reader, and is no button by its role.
Item {
    id: pressable

    readonly property alias hovered: pointer.hovered
    readonly property alias down: tap.pressed
    /// The keyboard speaks to it.
    readonly property bool visualFocus: activeFocus && byKeyboard
    property bool byKeyboard: false

    signal clicked()

    activeFocusOnTab: true
    Accessible.focusable: true
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onSpacePressed: clicked()
    onActiveFocusChanged: if (activeFocus) byKeyboard = !tap.pressed

    HoverHandler {
        id: pointer
        enabled: pressable.enabled
    }
    TapHandler {
        id: tap
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: {
            pressable.forceActiveFocus(Qt.MouseFocusReason);
            pressable.byKeyboard = false;
            pressable.clicked();
        }
    }
}
