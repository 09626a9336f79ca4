import QtQuick
import Tarnwick.Components

/// An icon and a text in one row, in the middle of its place, as buttons hold them. The text is cut
/// short where there is no room for it.
Item {
    id: line

    property string text
    property string symbol
    property int iconSize: 12
    property color color: Theme.ink
    property alias font: words.font
    property bool iconLast: false

    readonly property real besides: line.symbol.length > 0 ? line.iconSize + row.spacing : 0
    readonly property real room: Math.max(0, line.width - line.besides)

    implicitWidth: words.implicitWidth + line.besides
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
            // A part of a pixel that is missing is no lack of room.
            width: line.room + 1 < words.implicitWidth ? line.room : words.implicitWidth
            text: line.text
            maximumLineCount: 1
            elide: Text.ElideRight
            color: line.color
            font: Theme.font(13, Font.DemiBold)
            Accessible.ignored: true
        }
    }
}
