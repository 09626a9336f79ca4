import QtQuick
import Tarnwick.Components

/// What every screen stands on: its title, a line about it, and its content, in one column that
/// scrolls.
FocusScope {
    id: scaffold

    required property string title
    property string subtitle
    default property alias content: area.content

    ScrollArea {
        id: area

        anchors.fill: parent
        padding: 26
        spacing: 18
        Accessible.name: scaffold.title

        PlainText {
            width: parent.width
            text: scaffold.title
            font: Theme.display(24)
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
        }

        PlainText {
            width: parent.width
            visible: scaffold.subtitle.length > 0
            text: scaffold.subtitle
            color: Theme.inkSoft
            font: Theme.font(13.5)
            wrapMode: Text.Wrap
        }
    }

    FocusRing {
        visible: area.activeFocus
        corner: Theme.radius.window
        gap: -3
    }
}
