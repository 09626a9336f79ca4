import QtQuick
import Tarnwick.Components

/// What stands above the rows of a ListScaffold.
Column {
    id: head

    required property string title
    required property string subtitle
    default property alias content: body.data

    spacing: 18

    PlainText {
        width: parent.width
        text: head.title
        font: Theme.display(24)
        wrapMode: Text.Wrap
        Accessible.role: Accessible.Heading
    }

    PlainText {
        width: parent.width
        text: head.subtitle
        color: Theme.inkSoft
        font: Theme.font(13.5)
        wrapMode: Text.Wrap
    }

    Column {
        id: body

        width: parent.width
        spacing: 18
    }
}
