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
    default property alias content: column.data
    /// What stands beside the title, at the right.
    property alias corner: corner.data

    contentWidth: width
    contentHeight: column.y + column.height + Theme.enormous
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

    function reveal(item) {
        const top = item.mapToItem(contentItem, 0, 0).y - Theme.huge;
        const bottom = top + item.height + 2 * Theme.huge;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.min(contentHeight - height, bottom - height);
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

    Item {
        id: header
        x: column.x
        y: 28
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
        x: Math.max(Theme.enormous, (page.width - width) / 2)
        y: header.visible ? header.y + header.height + Theme.huge : 28
        width: Math.min(page.widest, page.width - 2 * Theme.enormous)
        spacing: Theme.large
    }
}
