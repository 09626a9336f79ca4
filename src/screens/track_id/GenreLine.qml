import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A genre that can be taken: its name from the left, the sign for it at the right end.
RowLayout {
    id: line

    required property string genre
    required property color color

    spacing: 8

    PlainText {
        Layout.fillWidth: true
        text: line.genre
        color: line.color
        font: Theme.font(12.5, Font.DemiBold)
        maximumLineCount: 1
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    Icon {
        symbol: "plus.circle.fill"
        size: 16
        color: line.color
    }
}
