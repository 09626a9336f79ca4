import QtQuick
import Tarnwick.Components

/// A short word in a capsule, filled while it is active.
Rectangle {
    id: pill

    required property string text
    property bool active: false
    property color tint: Theme.ink
    /// Name of a symbol beside the word; none for none.
    property string symbol
    property bool symbolLast: false
    /// How wide the capsule may get: the word is drawn a little smaller, and cut where that won't do.
    property real most: Infinity
    /// Whether something around it says the same to a screen reader.
    property bool quiet: false

    readonly property color wordColor: pill.active ? Theme.onFill : pill.tint
    readonly property real aside: pill.symbol.length > 0 ? icon.size + row.spacing : 0

    implicitWidth: row.implicitWidth + 22
    implicitHeight: words.implicitHeight + 10
    radius: Math.min(Theme.radius.pill, height / 2)
    color: pill.active ? pill.tint : "transparent"
    border.width: pill.active ? 0 : 1
    border.color: Theme.controlRule

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 5
        layoutDirection: pill.symbolLast ? Qt.RightToLeft : Qt.LeftToRight

        Icon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            visible: pill.symbol.length > 0
            symbol: pill.symbol
            size: 12
            color: pill.wordColor
        }

        PlainText {
            id: words

            width: Math.min(implicitWidth, pill.most - pill.aside - 22)
            fontSizeMode: words.width < words.implicitWidth ? Text.HorizontalFit : Text.FixedSize
            minimumPointSize: 7
            horizontalAlignment: Text.AlignHCenter
            text: pill.text
            color: pill.wordColor
            font: Theme.font(11.5)
            elide: Text.ElideRight
            Accessible.ignored: pill.quiet
        }
    }
}
