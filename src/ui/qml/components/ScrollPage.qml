import QtQuick
import QtQuick.Templates as T
import Tulvane

// A page of the main window: a title, a subtitle, and content that scrolls when it is longer than the window.
// The keyboard scrolls it too, and brings the control that gets the focus into view.
Flickable {
    id: page

    property string title
    property string subtitle
    property int widest: 760
    /// The width of what stands at the left, and does not scroll.
    property real side: 0
    /// Little room around, for a window that shows all at once.
    property bool compact: false
    readonly property int room: compact ? 20 : 28
    default property alias content: column.data
    readonly property alias column: column
    /// What stands beside the title, at the right.
    property alias corner: corner.data

    contentWidth: width
    contentHeight: column.y + column.height + (compact ? Theme.small : Theme.enormous)
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    activeFocusOnTab: false
    Accessible.role: Accessible.Pane
    Accessible.name: title

    Keys.onPressed: event => scroll(event)

    /// The keys that scroll, pressed here or where nothing else takes them.
    function scroll(event) {
        const ways = { [Qt.Key_PageDown]: height * 0.9, [Qt.Key_PageUp]: -height * 0.9, [Qt.Key_Down]: 60, [Qt.Key_Up]: -60 };
        const way = event.key === Qt.Key_Home ? -contentHeight : event.key === Qt.Key_End ? contentHeight : ways[event.key];
        if (way === undefined)
            return;
        contentY = Math.max(0, Math.min(contentHeight - height, contentY + way));
        event.accepted = true;
    }

    /// To the visible control of this name: it has the focus, and is lit for a moment.
    function lead(name: string) {
        const control = find(contentItem, name);
        if (!control)
            return;
        const field = control as TextBox;
        if (field)
            field.editor.forceActiveFocus(Qt.TabFocusReason);
        else
            control.forceActiveFocus(Qt.TabFocusReason);
        reveal(control);
        light.show(control);
    }
    function find(above, name) {
        const items = above.children;
        for (let i = 0; i < items.length; ++i) {
            const item = items[i];
            const found = !item.visible ? null : item.objectName === name ? item : find(item, name);
            if (found)
                return found;
        }
        return null;
    }

    function reveal(item) {
        const top = item.mapToItem(contentItem, 0, 0).y - Theme.huge;
        const bottom = top + item.height + 2 * Theme.huge;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.max(0, Math.min(contentHeight - height, bottom - height));
    }

    Connections {
        target: page.Window.window
        function onActiveFocusItemChanged() {
            let item = page.Window.activeFocusItem;
            for (let above = item; above; above = above.parent) {
                if (above === page.contentItem)
                    page.reveal(item);
            }
        }
    }

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar
        Accessible.ignored: true
        visible: size < 0.999
        policy: T.ScrollBar.AlwaysOn
        width: 12
        padding: 3
        minimumSize: 0.08

        contentItem: RoundBox {
            radius: 3
            color: Theme.controlBorder
            opacity: bar.pressed ? 0.9 : bar.hovered ? 0.7 : 0.35
        }
    }

    Beacon {
        id: light
    }
    Item {
        id: header
        x: column.x
        y: page.room
        width: column.width
        height: Math.max(words.height, corner.childrenRect.height)
        visible: page.title !== ""

        Column {
            id: words
            width: parent.width - (corner.childrenRect.width > 0 ? corner.childrenRect.width + Theme.large : 0)
            spacing: Theme.tiny

            Label {
                width: parent.width
                kind: Label.LargeTitle
                text: page.title
            }
            BalancedLabel {
                width: parent.width
                visible: text !== ""
                secondary: true
                text: page.subtitle
            }
        }
        Item {
            id: corner
            anchors.right: parent.right
            width: childrenRect.width
            height: childrenRect.height
        }
    }

    Column {
        id: column
        x: page.side + Math.max(Theme.enormous, (page.width - page.side - width) / 2)
        y: header.visible ? header.y + header.height + Theme.huge : page.room
        width: Math.min(page.widest, page.width - page.side - 2 * Theme.enormous)
        spacing: page.compact ? Theme.small : Theme.large
    }
}
