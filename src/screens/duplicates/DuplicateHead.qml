import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// How many copies a group has, and what they take up.
RowLayout {
    id: head

    required property string copies
    required property string reclaimable

    spacing: 12

    PlainText {
        Layout.fillWidth: true
        text: head.copies
        font: Theme.display(15)
        elide: Text.ElideRight
        Accessible.role: Accessible.Heading
    }

    Figure {
        text: head.reclaimable
        color: Theme.inkSoft
        font: Theme.font(12.5)
    }
}
