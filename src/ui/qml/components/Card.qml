import QtQuick
import Tulvane

// A raised surface around its content.
RoundBox {
    id: card

    default property alias content: holder.data
    property int padding: Theme.large

    implicitHeight: holder.childrenRect.height + 2 * padding
    radius: Theme.cardRadius
    color: Theme.card
    border.width: 1
    border.color: Theme.border

    Item {
        id: holder
        anchors.fill: parent
        anchors.margins: card.padding
    }
}
