import QtQuick
import Tarnwick.Components

/// An icon and a text in one row, in the middle of its place, as buttons hold them.
Item {
    id: line

    property string text
    property string symbol
    property int iconSize: 12
    property color color: Theme.ink
    property alias font: words.font
    property bool iconLast: false

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 6
        layoutDirection: line.iconLast ? Qt.RightToLeft : Qt.LeftToRight

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: line.symbol.length > 0
            symbol: line.symbol
            size: line.iconSize
            color: line.color
            heavy: true
        }

        PlainText {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            text: line.text
            color: line.color
            font: Theme.font(13, Font.DemiBold)
            Accessible.ignored: true
        }
    }
}
