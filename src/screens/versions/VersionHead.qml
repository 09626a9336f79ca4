import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// What a song is called, and how many cuts of it there are.
RowLayout {
    id: head

    required property string base
    required property string count

    spacing: 12

    PlainText {
        Layout.fillWidth: true
        text: head.base
        font: Theme.display(15)
        maximumLineCount: 1
        elide: Text.ElideRight
        Accessible.role: Accessible.Heading
    }

    Figure {
        text: head.count
        color: Theme.inkSoft
        font: Theme.font(12.5)
    }
}
